#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Unicode text as UTF-8. Letter case, character boundaries and month names come from ICU.
namespace tavrix {

inline bool isAscii(std::string_view text) {
  const auto load = [&](std::size_t at, auto word) {
    std::memcpy(&word, text.data() + at, sizeof word);
    return word;
  };
  const std::size_t size = text.size();
  // Words that overlap spare short texts, which most are, the loop over single bytes.
  if (size >= 8) {
    std::uint64_t bits = load(size - 8, std::uint64_t{});
    for (std::size_t at = 0; at + 8 < size; at += 8) bits |= load(at, std::uint64_t{});
    return (bits & 0x8080808080808080U) == 0;
  }
  if (size >= 4) {
    return ((load(0, std::uint32_t{}) | load(size - 4, std::uint32_t{})) & 0x80808080U) == 0;
  }
  unsigned bits = 0;
  for (const char c : text) bits |= static_cast<unsigned char>(c);
  return bits < 0x80;
}
/// The text with every ill-formed UTF-8 sequence replaced by U+FFFD.
std::string replacingInvalidUtf8(std::string_view text);

/// Letter case by the rules of a locale such as "ru_RU"; an empty locale means rules of no
/// language.
std::string lowerCased(std::string_view text, const std::string& localeID = "");
std::string upperCased(std::string_view text, const std::string& localeID = "");
/// Every word's first letter upper-case and the rest lower-case; words by the locale's word
/// boundaries.
std::string capitalised(std::string_view text, const std::string& localeID);
/// Full case folding: two texts that differ only by letter case fold to the same text.
std::string caseFolded(std::string_view text);

/// The extended grapheme clusters (Unicode Annex 29) of the text: what a reader calls characters.
/// The views point into `text`.
std::vector<std::string_view> graphemeClusters(std::string_view text);
/// The longest beginning of whole grapheme clusters that has at most `maxBytes` bytes.
std::string_view graphemePrefix(std::string_view text, std::size_t maxBytes);

/// Without Unicode White_Space characters at both ends.
std::string_view trimmedWhiteSpace(std::string_view text);

/// Columns that the text takes on a terminal: two for wide characters, none for combining marks.
int displayWidth(std::string_view text);
/// With control characters, line breaks and marks that turn the writing direction shown as U+FFFD,
/// for a line on a terminal.
std::string printable(std::string_view text);

enum class MonthNameStyle { full, abbreviated };
/// The stand-alone (nominative) name of a month, 1 to 12, as the locale spells it.
std::string monthName(int month, const std::string& localeID, MonthNameStyle style);

/// The name of a country by its code (ISO 3166-1 alpha-2, such as "IT") in the language of a
/// locale; nothing for a code that stands for no country.
std::optional<std::string> countryName(std::string_view code, const std::string& localeID);

/// The locale of the machine from LC_ALL, LC_TIME or LANG, such as "en_US"; "ru_RU", the program's
/// own, on a machine that names no language ("C", "POSIX" or nothing).
std::string systemLocaleID();

}  // namespace tavrix
