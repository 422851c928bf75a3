#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tavrix {

/// Returns a TIFF file's capture metadata as an Exif block: the fields of the first directory that
/// describe the picture, and the Exif and GPS directories. Values are kept, their offsets are not.
/// Returns an empty string if there are none, or if the file is not a TIFF. Throws ConversionError
/// with `metadataTooLarge` if a JPEG file cannot hold the block.
std::string exifOfTiff(std::span<const char> source);

/// Returns true if a TIFF structure has a camera's raw data: DNG, or a related format that is
/// recognised by a small picture in the first directory.
bool isRawTiff(std::span<const char> source);

}  // namespace tavrix
