#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/Text.h"

namespace tavrix::cli {

/// A text from outside for inside a sentence: fit to be printed, and shortened where it is so long
/// that the rest says no more.
inline std::string quoted(std::string_view text) {
  constexpr std::size_t longestQuote = 200;
  const std::string_view beginning = graphemePrefix(text, longestQuote);
  return printable(beginning) + (beginning.size() < text.size() ? "…" : "");
}

/// "a, b, c".
inline std::string joined(const std::vector<std::string_view>& words) {
  std::string text;
  for (const std::string_view word : words) {
    if (!text.empty()) text += ", ";
    text += word;
  }
  return text;
}

}  // namespace tavrix::cli
