#include "foundation/json/PlainJson.h"

#include "foundation/Text.h"

namespace tavrix {
namespace {

/// Longer strings are left to readJson(), which may refuse them.
constexpr std::size_t longestString = 65536;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isPlain(char c) { return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\'; }

bool isWellFormed(std::string_view text) {
  return isAscii(text) || replacingInvalidUtf8(text) == text;
}

}  // namespace

bool PlainJson::take(std::string& value) {
  if (!take("\"")) return false;
  std::size_t end = 0;
  while (end < rest_.size() && isPlain(rest_[end])) ++end;
  const std::string_view text = rest_.substr(0, end);
  if (end > longestString || !isWellFormed(text)) return false;
  value = text;
  rest_.remove_prefix(end);
  return take("\"") || takeEscaped(value);
}

/// Takes the rest of a string from its first escape, and appends it.
bool PlainJson::takeEscaped(std::string& value) {
  static constexpr std::string_view letters = "\"\\nrt";
  static constexpr std::string_view meanings = "\"\\\n\r\t";
  while (take("\\")) {
    const auto letter = rest_.empty() ? std::string_view::npos : letters.find(rest_.front());
    if (letter == std::string_view::npos) return false;
    value += meanings[letter];
    rest_.remove_prefix(1);
    std::size_t end = 0;
    while (end < rest_.size() && isPlain(rest_[end])) ++end;
    const std::string_view text = rest_.substr(0, end);
    value += text;
    if (value.size() > longestString || !isWellFormed(text)) return false;
    rest_.remove_prefix(end);
  }
  return take("\"");
}

bool PlainJson::take(bool& value) {
  value = rest_.starts_with('t');
  return take(value ? "true" : "false");
}

bool PlainJson::take(double& value) {
  const std::string_view begin = rest_;
  const bool isNegative = begin.starts_with('-');
  if (!beginsAsNumber(begin.substr(isNegative ? 1 : 0))) return false;
  if (!takeUpTo(std::from_chars(begin.data(), begin.data() + begin.size(), value))) return false;
  const std::string_view text = begin.substr(0, begin.size() - rest_.size());
  const auto point = text.find('.');
  const bool isJson =
      isDigit(text.back()) && (point == std::string_view::npos || isDigit(text[point + 1]));
  return isJson && !(value == 0 && isNegative);
}

bool PlainJson::beginsAsNumber(std::string_view text) {
  return !text.empty() && isDigit(text[0]) &&
         !(text[0] == '0' && text.size() > 1 && isDigit(text[1]));
}

bool PlainJson::takeUpTo(const std::from_chars_result& result) {
  if (result.ec != std::errc{}) return false;
  rest_.remove_prefix(static_cast<std::size_t>(result.ptr - rest_.data()));
  return true;
}

}  // namespace tavrix
