#pragma once

#include <optional>

#include "device/metadata/FileBytes.h"

namespace tavrix {

/// The file formats of pictures and films that this program can read.
enum class MediaFormat { jpeg, png, tiff, heif, movie, gif, bmp, webp };

/// Returns the format of a file by its content, or nullopt if it is unknown.
std::optional<MediaFormat> mediaFormatOf(FileBytes& file);

}  // namespace tavrix
