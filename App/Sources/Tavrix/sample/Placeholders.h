#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tavrix {

/// A QuickTime file (ISO/IEC 14496-12 boxes) with the right beginning and no film in it: "ftyp", a
/// "free" box that says so and names the file, and "mdat" with `mediaBytes` zero bytes.
std::string placeholderMovie(std::string_view fileName, std::size_t mediaBytes);

/// An edit sidecar: a property list in the outer form of such files, with no edit that a program
/// could apply.
std::string placeholderSidecar();

}  // namespace tavrix
