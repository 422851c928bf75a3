#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Text.h"

namespace tavrix::cli {

/// The width of help texts.
inline constexpr int helpColumns = 80;

/// Returns the lines of a text broken at its spaces, each at most `columns` terminal columns wide.
/// A longer word gets a line of its own, or several if `breaksWords`. A text that fits, or is
/// empty, is one line.
inline std::vector<std::string> wrapped(std::string_view text, int columns,
                                        bool breaksWords = false) {
  if (displayWidth(text) <= columns) return {std::string{text}};
  std::vector<std::string> lines{{}};
  int width = 0;
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
    const int wordWidth = displayWidth(word);
    if (!lines.back().empty() && width + 1 + wordWidth > columns) {
      lines.emplace_back();
      width = 0;
    }
    if (!lines.back().empty()) {
      lines.back() += ' ';
      ++width;
    }
    width += wordWidth;
    if (!breaksWords || wordWidth <= columns) {
      lines.back() += word;
      continue;
    }
    width = 0;
    for (const std::string_view cluster : graphemeClusters(word)) {
      if (width + displayWidth(cluster) > columns) {
        lines.emplace_back();
        width = 0;
      }
      lines.back() += cluster;
      width += displayWidth(cluster);
    }
  }
  return lines;
}

}  // namespace tavrix::cli
