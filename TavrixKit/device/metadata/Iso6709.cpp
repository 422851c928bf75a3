#include "device/metadata/Iso6709.h"

#include <charconv>

namespace tavrix {
namespace {

constexpr std::string_view digits = "0123456789";

std::optional<double> numberOf(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

/// Takes one coordinate from the front of a text. `degreeDigits` is the number of digits of whole
/// degrees.
std::optional<double> takeDegrees(std::string_view& text, std::size_t degreeDigits) {
  if (text.empty() || (text.front() != '+' && text.front() != '-')) return std::nullopt;
  const bool isNegative = text.front() == '-';
  text.remove_prefix(1);
  const std::size_t whole = std::min(text.find_first_not_of(digits), text.size());
  std::size_t end = whole;
  if (end < text.size() && text[end] == '.') {
    end = std::min(text.find_first_not_of(digits, end + 1), text.size());
  }
  std::string_view number = text.substr(0, end);
  text.remove_prefix(end);
  // Two digits beyond those of the degrees are minutes, two more are seconds.
  if (whole < degreeDigits || whole > degreeDigits + 4 || (whole - degreeDigits) % 2 != 0) {
    return std::nullopt;
  }
  double degrees = 0;
  double unit = 1;
  for (std::size_t left = whole; left > degreeDigits; left -= 2, unit *= 60) {
    const std::size_t length = unit == 1 ? degreeDigits : 2;
    degrees += numberOf(number.substr(0, length)).value_or(0) / unit;
    number.remove_prefix(length);
  }
  const auto last = numberOf(number);
  if (!last) return std::nullopt;
  degrees += *last / unit;
  return isNegative ? -degrees : degrees;
}

}  // namespace

std::optional<GeoPoint> parseIso6709(std::string_view text) {
  const auto latitude = takeDegrees(text, 2);
  if (!latitude) return std::nullopt;
  const auto longitude = takeDegrees(text, 3);
  if (!longitude) return std::nullopt;
  return GeoPoint{*latitude, *longitude};
}

}  // namespace tavrix
