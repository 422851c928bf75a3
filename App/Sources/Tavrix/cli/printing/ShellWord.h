#pragma once

#include <string>
#include <string_view>

namespace tavrix::cli {

/// Returns a word of a shell that has this text.
inline std::string shellWord(const std::string& text) {
  constexpr std::string_view plain =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_=.,:/+-";
  if (!text.empty() && text.find_first_not_of(plain) == std::string::npos) return text;
  std::string word = "'";
  for (const char c : text) word += c == '\'' ? std::string{"'\\''"} : std::string{c};
  return word + "'";
}

/// Returns a word of a shell that leads to this path. The word is never taken for an option.
inline std::string shellPath(const std::string& path) {
  return shellWord(path.starts_with('-') ? "./" + path : path);
}

}  // namespace tavrix::cli
