#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tavrix {

/// What a TIFF file tells of its capture as an Exif block of its own: of the first directory the
/// fields that describe the picture, and the directories for Exif and GPS whole. The values stay as
/// they are; where they lie does not. Empty when there is none, or when the file is no TIFF. Throws
/// ConversionError with `tooLarge` for more than a JPEG file holds.
std::string exifOfTiff(std::span<const char> source);

/// Whether a TIFF structure holds a camera's raw data: DNG, or one of its relatives that show by a
/// small picture in the first directory.
bool isRawTiff(std::span<const char> source);

}  // namespace tavrix
