#pragma once

namespace tavrix {

/// Has the library of HEIF decode HEVC by HevcDecoder, which conceals no damage, instead of by the
/// decoder that comes with it. Once for a process.
void useOwnHevcDecoder();

}  // namespace tavrix
