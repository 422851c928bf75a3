#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tavrix::cli {

/// The form in which a call shows the progress of long work on standard error.
enum class ProgressForm {
  bar,   ///< a line that is redrawn, if standard error is a terminal
  json,  ///< one JSON object a line, for messages too
  none,
};

inline constexpr std::array<std::string_view, 3> progressFormTexts{"bar", "json", "none"};

/// Returns the form for its text. Returns nullopt if there is no such form.
inline std::optional<ProgressForm> progressFormOf(std::string_view text) {
  for (std::size_t i = 0; i < progressFormTexts.size(); ++i) {
    if (progressFormTexts[i] == text) return static_cast<ProgressForm>(i);
  }
  return std::nullopt;
}

}  // namespace tavrix::cli
