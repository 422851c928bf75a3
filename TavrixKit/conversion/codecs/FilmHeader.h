#pragma once

#include <string_view>

#include "device/metadata/RangedReader.h"

namespace tavrix {

/// Replaces the user data of an MP4 file: writes the box "udta" at the end of its "moov", extending
/// that into the free box behind it if necessary. Nothing else in the file moves. `file` must read
/// the file that `descriptor` writes. Throws ConversionError if the file has another layout or the
/// room is too small, and FileError if it cannot be written.
void setUserData(RangedReader& file, int descriptor, std::string_view box);

}  // namespace tavrix
