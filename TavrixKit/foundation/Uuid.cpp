#include "foundation/Uuid.h"

#include <charconv>

namespace tavrix {
namespace {

constexpr std::size_t textSize = 36;

constexpr bool isHyphenAt(std::size_t position) {
  return position == 8 || position == 13 || position == 18 || position == 23;
}

}  // namespace

std::string Uuid::text() const {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  text.reserve(textSize);
  for (const std::uint8_t byte : bytes) {
    if (isHyphenAt(text.size())) text += '-';
    text += digits[byte >> 4U];
    text += digits[byte & 15U];
  }
  return text;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
  if (text.size() != textSize) return std::nullopt;
  Uuid uuid;
  std::size_t at = 0;
  for (std::uint8_t& byte : uuid.bytes) {
    if (isHyphenAt(at) && text[at++] != '-') return std::nullopt;
    const char* const end = text.data() + at + 2;
    const auto [stop, error] = std::from_chars(text.data() + at, end, byte, 16);
    if (error != std::errc{} || stop != end) return std::nullopt;
    at += 2;
  }
  return uuid;
}

}  // namespace tavrix
