#include "foundation/Text.h"

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <memory>

#include "foundation/DateFormatterCache.h"

namespace tavrix {
namespace {

std::int32_t length32(std::string_view text) { return static_cast<std::int32_t>(text.size()); }

/// Returns the character at `at` and moves `at` past it. Returns a negative value if the sequence
/// is ill-formed.
UChar32 nextCharacter(std::string_view text, std::int32_t& at) {
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  UChar32 character = 0;
  U8_NEXT(bytes, at, length32(text), character);
  return character;
}

enum class Case { lower, upper, title, folded };

std::string mapped(std::string_view text, const char* localeID, Case wanted) {
  std::string result;
  icu::StringByteSink<std::string> sink{&result};
  UErrorCode status = U_ZERO_ERROR;
  const icu::StringPiece piece{text.data(), length32(text)};
  switch (wanted) {
    case Case::lower:
      icu::CaseMap::utf8ToLower(localeID, 0, piece, sink, nullptr, status);
      break;
    case Case::upper:
      icu::CaseMap::utf8ToUpper(localeID, 0, piece, sink, nullptr, status);
      break;
    case Case::title:
      icu::CaseMap::utf8ToTitle(localeID, 0, nullptr, piece, sink, nullptr, status);
      break;
    case Case::folded:
      icu::CaseMap::utf8Fold(0, piece, sink, nullptr, status);
      break;
  }
  return U_SUCCESS(status) ? result : std::string{text};
}

/// Returns true if the case of an ASCII text can be mapped without ICU. Turkish, Azerbaijani and
/// Lithuanian have their own rules for "I".
bool hasPlainAsciiCase(std::string_view text, std::string_view localeID) {
  return isAscii(text) && !localeID.starts_with("tr") && !localeID.starts_with("az") &&
         !localeID.starts_with("lt");
}

/// Returns true if the character would end, overwrite or reorder a line. Joiners, which hold emoji
/// together, do not.
bool breaksLine(UChar32 character) {
  const int type = u_charType(character);
  return type == U_CONTROL_CHAR || type == U_LINE_SEPARATOR || type == U_PARAGRAPH_SEPARATOR ||
         u_hasBinaryProperty(character, UCHAR_BIDI_CONTROL);
}

std::string asciiLowered(std::string_view text) {
  std::string result{text};
  for (char& c : result) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return result;
}

icu::BreakIterator& graphemeIterator() {
  thread_local const std::unique_ptr<icu::BreakIterator> iterator = [] {
    UErrorCode status = U_ZERO_ERROR;
    return std::unique_ptr<icu::BreakIterator>{
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status)};
  }();
  return *iterator;
}

}  // namespace

std::string replacingInvalidUtf8(std::string_view text) {
  if (isAscii(text)) return std::string{text};
  std::string result;
  result.reserve(text.size());
  for (std::int32_t at = 0; at < length32(text);) {
    const std::int32_t begin = at;
    if (nextCharacter(text, at) < 0) {
      result += "\uFFFD";
    } else {
      result += text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(at - begin));
    }
  }
  return result;
}

std::string lowerCased(std::string_view text, const std::string& localeID) {
  if (hasPlainAsciiCase(text, localeID)) return asciiLowered(text);
  return mapped(text, localeID.c_str(), Case::lower);
}

std::string upperCased(std::string_view text, const std::string& localeID) {
  if (hasPlainAsciiCase(text, localeID)) {
    std::string result{text};
    for (char& c : result) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    return result;
  }
  return mapped(text, localeID.c_str(), Case::upper);
}

std::string capitalised(std::string_view text, const std::string& localeID) {
  return mapped(text, localeID.c_str(), Case::title);
}

std::string caseFolded(std::string_view text) {
  return isAscii(text) ? asciiLowered(text) : mapped(text, "", Case::folded);
}

std::vector<std::string_view> graphemeClusters(std::string_view text) {
  std::vector<std::string_view> clusters;
  UErrorCode status = U_ZERO_ERROR;
  UText opened = UTEXT_INITIALIZER;
  utext_openUTF8(&opened, text.data(), length32(text), &status);
  icu::BreakIterator& iterator = graphemeIterator();
  iterator.setText(&opened, status);
  std::int32_t begin = iterator.first();
  for (std::int32_t end = iterator.next(); end != icu::BreakIterator::DONE; end = iterator.next()) {
    clusters.push_back(
        text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)));
    begin = end;
  }
  utext_close(&opened);
  return clusters;
}

std::string_view graphemePrefix(std::string_view text, std::size_t maxBytes) {
  if (text.size() <= maxBytes) return text;
  std::size_t bytes = 0;
  for (const std::string_view cluster : graphemeClusters(text)) {
    if (bytes + cluster.size() > maxBytes) break;
    bytes += cluster.size();
  }
  return text.substr(0, bytes);
}

std::string_view trimmedWhiteSpace(std::string_view text) {
  std::size_t first = text.size();
  std::size_t last = 0;
  for (std::int32_t at = 0; at < length32(text);) {
    const auto begin = static_cast<std::size_t>(at);
    const UChar32 character = nextCharacter(text, at);
    if (character >= 0 && u_isUWhiteSpace(character)) continue;
    first = std::min(first, begin);
    last = static_cast<std::size_t>(at);
  }
  return first < last ? text.substr(first, last - first) : std::string_view{};
}

int displayWidth(std::string_view text) {
  int width = 0;
  for (std::int32_t at = 0; at < length32(text);) {
    const UChar32 character = nextCharacter(text, at);
    const int type = u_charType(character);
    if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || type == U_FORMAT_CHAR) continue;
    const int eastAsian = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    width += eastAsian == U_EA_WIDE || eastAsian == U_EA_FULLWIDTH ? 2 : 1;
  }
  return width;
}

std::string printable(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::int32_t at = 0; at < length32(text);) {
    const std::int32_t begin = at;
    const UChar32 character = nextCharacter(text, at);
    if (character < 0 || breaksLine(character)) {
      result += "\uFFFD";
    } else {
      result += text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(at - begin));
    }
  }
  return result;
}

std::string monthName(int month, const std::string& localeID, MonthNameStyle style) {
  using Key = DateFormatterCache::Key;
  const auto formatter = DateFormatterCache::shared().formatter(
      {Key::Kind::monthName, style == MonthNameStyle::full ? "LLLL" : "LLL", localeID, "UTC"});
  const auto firstDay = std::chrono::year{2000} / month / 1;
  return formatter->text(Instant{std::chrono::sys_days{firstDay}});
}

std::optional<std::string> countryName(std::string_view code, const std::string& localeID) {
  const std::string text{code};
  const icu::Locale country{"", text.c_str()};
  icu::UnicodeString name;
  country.getDisplayCountry(icu::Locale{localeID.c_str()}, name);
  std::string result;
  name.toUTF8String(result);
  // ICU returns the code itself if the country has no name.
  if (result.empty() || result == code) return std::nullopt;
  return result;
}

}  // namespace tavrix
