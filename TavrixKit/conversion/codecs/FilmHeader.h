#pragma once

#include <string_view>

namespace tavrix {

class RangedReader;

/// Replaces the user data of an MP4 file in place. `box` is a complete "udta" box, header included.
/// It becomes the last box in "moov", instead of a "udta" that was last. "moov" grows or shrinks
/// against the "free" box that must directly follow it; nothing else in the file moves. `file` and
/// `descriptor` refer to the same file, and the caller keeps both. Throws ConversionError if "moov"
/// or "free" is missing or "free" is too small (at least its 8-byte header must remain), FileError
/// if writing fails, and what `file` throws.
void setUserData(RangedReader& file, int descriptor, std::string_view box);

}  // namespace tavrix
