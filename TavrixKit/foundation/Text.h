#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Unicode text in UTF-8. Letter case, character boundaries and month names come from ICU.
namespace tavrix {

inline bool isAscii(std::string_view text) {
  const auto load = [&](std::size_t at, auto word) {
    std::memcpy(&word, text.data() + at, sizeof word);
    return word;
  };
  const std::size_t size = text.size();
  // Most texts are short. Overlapping words avoid a loop over single bytes for them.
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
/// Returns the text with every ill-formed UTF-8 sequence replaced by U+FFFD.
std::string replacingInvalidUtf8(std::string_view text);

/// Return the text in lower or upper case, by the rules of a locale such as "ru_RU". An empty
/// locale means language-independent rules.
std::string lowerCased(std::string_view text, const std::string& localeID = "");
std::string upperCased(std::string_view text, const std::string& localeID = "");
/// Returns the text with the first letter of every word in upper case and the rest in lower case.
/// Uses the locale's word boundaries.
std::string capitalised(std::string_view text, const std::string& localeID);
/// Returns the text after full case folding: texts that differ only in letter case become equal.
std::string caseFolded(std::string_view text);

/// Returns the extended grapheme clusters (Unicode Annex 29) of the text: the characters as a
/// reader sees them. The views point into `text`.
std::vector<std::string_view> graphemeClusters(std::string_view text);
/// Returns the longest prefix of whole grapheme clusters that has at most `maxBytes` bytes.
std::string_view graphemePrefix(std::string_view text, std::size_t maxBytes);

/// Returns the text without Unicode White_Space characters at both ends.
std::string_view trimmedWhiteSpace(std::string_view text);

/// Returns the number of columns that the text takes on a terminal: two for a wide character, none
/// for a combining mark.
int displayWidth(std::string_view text);
/// Returns the text for one line on a terminal: control characters, line breaks and bidirectional
/// controls are replaced by U+FFFD, as are ill-formed sequences.
std::string printable(std::string_view text);

enum class MonthNameStyle { full, abbreviated };
/// Returns the stand-alone (nominative) name of a month, 1 to 12, in the locale's spelling.
std::string monthName(int month, const std::string& localeID, MonthNameStyle style);

/// Returns the name of a country in the language of a locale, from its code (ISO 3166-1 alpha-2,
/// such as "IT"). Returns nullopt if the code has no name.
std::optional<std::string> countryName(std::string_view code, const std::string& localeID);

/// Returns the locale of the machine from LC_ALL, LC_TIME or LANG, such as "en_US". If they name no
/// language ("C", "POSIX" or unset), returns the program's own locale, "ru_RU".
std::string systemLocaleID();
/// As systemLocaleID(), for the messages of programs: from LC_ALL, LC_MESSAGES or LANG.
std::string systemMessagesLocaleID();

}  // namespace tavrix
