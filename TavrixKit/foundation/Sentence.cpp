#include "foundation/Sentence.h"

#include <array>

namespace tavrix {
namespace {

struct Unit {
  std::string_view russian;
  std::string_view english;
};

constexpr std::array<Unit, 6> units{
    {{"Б", "B"}, {"КБ", "kB"}, {"МБ", "MB"}, {"ГБ", "GB"}, {"ТБ", "TB"}, {"ПБ", "PB"}}};

// A no-break space keeps a number on one line.
constexpr std::string_view noBreakSpace = "\u00A0";

}  // namespace

Language languageOfLocale(std::string_view localeID) {
  return localeID.starts_with("en") ? Language::english : Language::russian;
}

std::string_view nounFor(Language language, std::uint64_t count, const CountedNoun& noun) {
  if (language == Language::english) return count == 1 ? noun.englishOne : noun.englishMany;
  const auto lastTwo = count % 100;
  const auto last = count % 10;
  if (lastTwo >= 11 && lastTwo <= 14) return noun.russianMany;
  if (last == 1) return noun.russianOne;
  return last >= 2 && last <= 4 ? noun.russianFew : noun.russianMany;
}

std::string numberText(Language language, std::uint64_t count) {
  std::string text = std::to_string(count);
  const std::string_view separator = language == Language::english ? "," : noBreakSpace;
  for (std::size_t at = text.size(); at > 3;) {
    at -= 3;
    text.insert(at, separator);
  }
  return text;
}

std::string counted(Language language, std::uint64_t count, const CountedNoun& noun) {
  return fmt::format("{} {}", numberText(language, count), nounFor(language, count, noun));
}

std::string bytesText(Language language, std::uint64_t bytes) {
  std::size_t unit = 0;
  double value = static_cast<double>(bytes);
  // A value that would round up to 1000 moves to the next unit.
  while (value >= (unit == 0 ? 1000 : 999.95) && unit + 1 < units.size()) {
    value /= 1000;
    ++unit;
  }
  const bool isRussian = language == Language::russian;
  const std::string_view name = isRussian ? units[unit].russian : units[unit].english;
  std::string text = unit == 0 ? std::to_string(bytes) : fmt::format("{:.1f}", value);
  if (isRussian) {
    if (const auto point = text.find('.'); point != std::string::npos) text[point] = ',';
  }
  return fmt::format("{}{}{}", text, noBreakSpace, name);
}

}  // namespace tavrix
