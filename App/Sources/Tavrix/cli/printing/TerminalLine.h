#pragma once

#include <chrono>
#include <string_view>

namespace tavrix::cli {

/// Returns to the start of a terminal's line and clears it, for a line that is redrawn.
inline constexpr std::string_view clearLine = "\r\x1b[K";
/// The time between two drawings of such a line.
inline constexpr std::chrono::milliseconds drawInterval{100};

}  // namespace tavrix::cli
