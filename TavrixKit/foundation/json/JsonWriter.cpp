#include "foundation/json/JsonWriter.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>
#include <iterator>

#include "foundation/Text.h"

namespace tavrix {
namespace {

constexpr std::size_t flushBytes = 65536;

template <typename T>
std::string_view shortest(T number, std::array<char, 32>& buffer) {
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())};
}

void appendEscaped(char c, std::string& out) {
  constexpr std::string_view digits = "0123456789abcdef";
  switch (c) {
    case '"':
      out += "\\\"";
      break;
    case '\\':
      out += "\\\\";
      break;
    case '\n':
      out += "\\n";
      break;
    case '\r':
      out += "\\r";
      break;
    case '\t':
      out += "\\t";
      break;
    default:
      out += "\\u00";
      out += digits[static_cast<unsigned char>(c) >> 4U];
      out += digits[static_cast<unsigned char>(c) & 15U];
  }
}

/// Returns the number of bytes of the character at the beginning of well-formed UTF-8 if it
/// controls a terminal or hides or reorders text: U+007F to U+009F, U+2028, U+2029 and the
/// bidirectional controls U+200E, U+200F, U+202A to U+202E and U+2066 to U+2069. Returns 0 for any
/// other.
std::size_t hiddenLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) == 0x7F) return 1;
  if (byte(0) == 0xC2 && byte(1) < 0xA0) return 2;
  if (byte(0) != 0xE2) return 0;
  const bool isHidden = (byte(1) == 0x80 && (byte(2) == 0x8E || byte(2) == 0x8F ||
                                             (byte(2) >= 0xA8 && byte(2) <= 0xAE))) ||
                        (byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9);
  return isHidden ? 3 : 0;
}

/// Appends the escape of a character of at most three bytes.
void appendHidden(std::string_view character, std::string& out) {
  unsigned code = static_cast<unsigned char>(character[0]);
  if (character.size() > 1) code &= character.size() == 2 ? 0x1FU : 0x0FU;
  for (const char c : character.substr(1))
    code = code << 6U | (static_cast<unsigned char>(c) & 0x3FU);
  fmt::format_to(std::back_inserter(out), "\\u{:04x}", code);
}

}  // namespace

void JsonWriter::newLine() {
  if (layout_ == JsonLayout::line) return;
  buffer_ += '\n';
  buffer_.append(levels_.size() * 2, ' ');
}

void JsonWriter::beforeValue() {
  if (afterKey_) {
    afterKey_ = false;
  } else if (!levels_.empty()) {
    if (!levels_.back().isEmpty) buffer_ += ',';
    levels_.back().isEmpty = false;
    newLine();
  }
}

JsonWriter& JsonWriter::begin(char bracket) {
  beforeValue();
  buffer_ += bracket;
  levels_.push_back({});
  return *this;
}

JsonWriter& JsonWriter::end(char bracket) {
  const bool wasEmpty = levels_.back().isEmpty;
  levels_.pop_back();
  if (!wasEmpty) newLine();
  buffer_ += bracket;
  flushWhenLarge();
  return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
  beforeValue();
  quoted(name);
  buffer_ += layout_ == JsonLayout::line ? ":" : ": ";
  afterKey_ = true;
  return *this;
}

JsonWriter& JsonWriter::raw(std::string_view text) {
  beforeValue();
  buffer_ += text;
  return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) {
  beforeValue();
  quoted(text);
  return *this;
}

JsonWriter& JsonWriter::value(bool flag) { return raw(flag ? "true" : "false"); }

JsonWriter& JsonWriter::value(double number) {
  std::array<char, 32> buffer{};
  return raw(std::isfinite(number) ? shortest(number, buffer) : "null");
}

JsonWriter& JsonWriter::wholeNumber(std::int64_t number) {
  std::array<char, 32> buffer{};
  return raw(shortest(number, buffer));
}

JsonWriter& JsonWriter::wholeNumber(std::uint64_t number) {
  std::array<char, 32> buffer{};
  return raw(shortest(number, buffer));
}

void JsonWriter::quoted(std::string_view text) {
  const std::string repaired = isAscii(text) ? std::string{} : replacingInvalidUtf8(text);
  if (!repaired.empty()) text = repaired;
  buffer_ += '"';
  std::size_t plainBegin = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const bool isSpecial = static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
    const std::size_t hidden = hiddenLength(text.substr(i));
    if (!isSpecial && hidden == 0) continue;
    buffer_ += text.substr(plainBegin, i - plainBegin);
    if (isSpecial) {
      appendEscaped(c, buffer_);
    } else {
      appendHidden(text.substr(i, hidden), buffer_);
      i += hidden - 1;
    }
    plainBegin = i + 1;
  }
  buffer_ += text.substr(plainBegin);
  buffer_ += '"';
}

void JsonWriter::flushWhenLarge() {
  if (buffer_.size() < flushBytes) return;
  sink_.write(buffer_);
  buffer_.clear();
}

void JsonWriter::finish() {
  buffer_ += '\n';
  sink_.write(buffer_);
  buffer_.clear();
}

}  // namespace tavrix
