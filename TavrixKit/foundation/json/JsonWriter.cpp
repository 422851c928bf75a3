#include "foundation/json/JsonWriter.h"

#include <array>
#include <charconv>
#include <cmath>

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
    if (static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\') continue;
    buffer_ += text.substr(plainBegin, i - plainBegin);
    appendEscaped(c, buffer_);
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
