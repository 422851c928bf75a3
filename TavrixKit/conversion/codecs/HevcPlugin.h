#pragma once

namespace tavrix {

/// Makes libheif decode HEVC with HevcDecoder, which conceals no damage, instead of its own
/// decoder. Takes effect once for the whole process.
void useOwnHevcDecoder();

}  // namespace tavrix
