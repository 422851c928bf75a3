#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/Text.h"

namespace tavrix {

/// Returns a text from outside for use in a sentence: printable, and shortened to 200 characters
/// with "…" at the end.
inline std::string forSentence(std::string_view text) {
  constexpr std::size_t longestQuote = 200;
  const std::string_view beginning = graphemePrefix(text, longestQuote);
  return printable(beginning) + (beginning.size() < text.size() ? "…" : "");
}

/// Returns the words separated by commas: "a, b, c".
inline std::string joined(const std::vector<std::string_view>& words) {
  std::string text;
  for (const std::string_view word : words) {
    if (!text.empty()) text += ", ";
    text += word;
  }
  return text;
}

}  // namespace tavrix
