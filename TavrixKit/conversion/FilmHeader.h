#pragma once

#include <string_view>

#include "device/RangedReader.h"

namespace tavrix {

/// Gives an MP4 file other user data: the box "udta" at the end of its "moov", and what of it does
/// not fit there, in the free room behind it; nothing else of the file moves. `file` reads what
/// `descriptor` writes. Throws ConversionError where the file is no such one or the room is too
/// small, and FileError when it cannot be written.
void setUserData(RangedReader& file, int descriptor, std::string_view box);

}  // namespace tavrix
