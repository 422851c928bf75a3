#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tavrix {

/// Returns a QuickTime file (ISO/IEC 14496-12 boxes) with a valid beginning but no film: "ftyp", a
/// "free" box that says so and names the file, and "mdat" with `mediaBytes` zero bytes.
std::string placeholderMovie(std::string_view fileName, std::size_t mediaBytes);

/// Returns an edit sidecar: a property list with the outer structure of such files, but without an
/// edit that a program could apply.
std::string placeholderSidecar();

}  // namespace tavrix
