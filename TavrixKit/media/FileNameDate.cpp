#include "media/FileNameDate.h"

#include <algorithm>
#include <array>

#include "media/ParsedName.h"

namespace tavrix {
namespace {

using namespace std::chrono;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
char lowerCased(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Takes the parts of a name from the left. A part that does not match takes nothing.
class NameParts {
 public:
  explicit NameParts(std::string_view text) : rest_(text) {}

  /// Takes a text of lower-case ASCII letters and other characters, in any letter case.
  bool take(std::string_view text) {
    const bool matches =
        rest_.size() >= text.size() &&
        std::equal(text.begin(), text.end(), rest_.begin(),
                   [](char wanted, char found) { return wanted == lowerCased(found); });
    if (matches) rest_.remove_prefix(text.size());
    return matches;
  }
  /// Takes one of several characters. Returns 0 if there is none of them.
  char takeOneOf(std::string_view characters) {
    if (rest_.empty() || characters.find(rest_.front()) == std::string_view::npos) return 0;
    const char taken = rest_.front();
    rest_.remove_prefix(1);
    return taken;
  }
  /// Takes a number of exactly `count` digits; more digits may follow it.
  std::optional<int> takeNumber(std::size_t count) {
    if (digits() < count) return std::nullopt;
    const auto number = parseDigits(rest_.substr(0, count));
    rest_.remove_prefix(count);
    return number;
  }
  std::string_view takeDigits() {
    const std::string_view taken = rest_.substr(0, digits());
    rest_.remove_prefix(taken.size());
    return taken;
  }
  std::string_view takeUntilDigit() {
    const auto end = std::find_if(rest_.begin(), rest_.end(), isDigit);
    const std::string_view taken = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
    rest_.remove_prefix(taken.size());
    return taken;
  }
  std::size_t digits() const {
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), isDigit);
    return static_cast<std::size_t>(end - rest_.begin());
  }
  /// Returns true if no letter or digit follows, so that the last part is not cut out of a longer
  /// one.
  bool isAtBoundary() const {
    return rest_.empty() || (!isDigit(rest_.front()) && !isLetter(rest_.front()));
  }

 private:
  std::string_view rest_;
};

std::optional<CivilDate> existingDay(int y, int m, int d, int earliestYear) {
  constexpr int latestYear = 2099;
  const CivilDate day{year{y}, month{static_cast<unsigned>(m)},
                      std::chrono::day{static_cast<unsigned>(d)}};
  return day.ok() && y >= earliestYear && y <= latestYear ? std::optional{day} : std::nullopt;
}

std::optional<milliseconds> existingTime(int h, int m, int s) {
  if (h > 23 || m > 59 || s > 59) return std::nullopt;
  return hours{h} + minutes{m} + seconds{s};
}

/// Takes "20190412".
std::optional<CivilDate> takeCompactDay(NameParts& parts) {
  constexpr int earliestYear = 1990;
  const auto y = parts.takeNumber(4);
  const auto m = parts.takeNumber(2);
  const auto d = parts.takeNumber(2);
  return y && m && d ? existingDay(*y, *m, *d, earliestYear) : std::nullopt;
}

/// Takes three numbers that one of the characters `between` separates.
std::optional<std::array<int, 3>> takeSeparated(NameParts& parts, std::array<std::size_t, 3> digits,
                                                std::string_view between) {
  const NameParts before = parts;
  const auto first = parts.takeNumber(digits[0]);
  const char separator = first ? parts.takeOneOf(between) : '\0';
  const auto second = separator != 0 ? parts.takeNumber(digits[1]) : std::nullopt;
  const bool isAgain = second && parts.takeOneOf({&separator, 1}) != 0;
  const auto third = isAgain ? parts.takeNumber(digits[2]) : std::nullopt;
  if (third) return std::array{*first, *second, *third};
  parts = before;
  return std::nullopt;
}

/// A part of a name that may be absent (`isThere` is false) or make no sense (no `value`).
template <typename Value>
struct Reading {
  bool isThere = false;
  std::optional<Value> value{};
};

/// Takes the half of a day behind a time of twelve hours, and returns the hour of the whole day.
int takeHalf(NameParts& parts, int hour) {
  NameParts ahead = parts;
  // Newer systems write a narrow space that does not break.
  while (ahead.take(" ") || ahead.take("\u00A0") || ahead.take("\u202F")) {
  }
  const bool isAfternoon = ahead.take("pm");
  if ((!isAfternoon && !ahead.take("am")) || !ahead.isAtBoundary() || hour < 1 || hour > 12) {
    return hour;
  }
  parts = ahead;
  return hour % 12 + (isAfternoon ? 12 : 0);
}

/// Takes "101112", "101112345" with milliseconds, "10.11.12" or "1.11.12 PM".
Reading<milliseconds> takeTime(NameParts& parts) {
  const std::size_t digits = parts.digits();
  if (digits == 6 || digits == 9) {
    const auto h = parts.takeNumber(2);
    const auto m = parts.takeNumber(2);
    const auto s = parts.takeNumber(2);
    const milliseconds fraction{digits == 9 ? parts.takeNumber(3).value_or(0) : 0};
    const auto time = existingTime(*h, *m, *s);
    return {true, time ? std::optional{*time + fraction} : std::nullopt};
  }
  if (digits != 1 && digits != 2) return {};
  const auto time = takeSeparated(parts, {digits, 2, 2}, ".-_: ");
  if (!time || parts.digits() > 0) return {};
  return {true, existingTime(takeHalf(parts, (*time)[0]), (*time)[1], (*time)[2])};
}

/// Takes what stands between a day and its time: one character, or a word such as "at" or "в".
void takeToTime(NameParts& parts) {
  if (parts.take(" ")) {
    parts.takeUntilDigit();
  } else if (parts.takeOneOf(",") != 0) {
    parts.take(" ");
  } else {
    parts.takeOneOf("_-Tt");
  }
}

/// Takes the time that follows a day.
Reading<milliseconds> takeTimeOfDay(NameParts& parts) {
  const NameParts before = parts;
  takeToTime(parts);
  const auto time = takeTime(parts);
  if (time.isThere && parts.isAtBoundary()) return time;
  parts = before;
  return {};
}

FileNameDate noonOf(CivilDate day) { return {local_days{day} + hours{12}}; }

/// Returns the date of a day and of the time behind it.
std::optional<FileNameDate> dateOf(CivilDate day, NameParts& parts, bool needsTime) {
  const auto time = takeTimeOfDay(parts);
  if (time.isThere) {
    return time.value ? std::optional{FileNameDate{local_days{day} + *time.value}} : std::nullopt;
  }
  return !needsTime && parts.isAtBoundary() ? std::optional{noonOf(day)} : std::nullopt;
}

/// Reads "2020-01-01", also with a time behind it.
std::optional<FileNameDate> separatedDate(NameParts parts) {
  constexpr int earliestYear = 1900;
  const auto numbers = takeSeparated(parts, {4, 2, 2}, "-._");
  if (!numbers || parts.digits() > 0) return std::nullopt;
  const auto day = existingDay((*numbers)[0], (*numbers)[1], (*numbers)[2], earliestYear);
  return day ? dateOf(*day, parts, false) : std::nullopt;
}

/// Reads "20190412_101112", "20190412101112", "20190412-WA0003"; the day alone only if programs
/// that write it so begin with the same word.
std::optional<FileNameDate> compactDate(NameParts parts, bool needsTime) {
  const auto day = takeCompactDay(parts);
  if (!day) return std::nullopt;
  NameParts ahead = parts;
  if (ahead.take("-wa") && !ahead.takeDigits().empty() && ahead.isAtBoundary()) return noonOf(*day);
  return dateOf(*day, parts, needsTime);
}

/// Reads "photo_2@12-04-2019_10-11-12".
std::optional<FileNameDate> exportedDate(NameParts parts) {
  parts.takeUntilDigit();
  if (parts.takeDigits().empty() || !parts.take("@")) return std::nullopt;
  const auto numbers = takeSeparated(parts, {2, 2, 4}, "-");
  if (!numbers) return std::nullopt;
  const auto day = existingDay((*numbers)[2], (*numbers)[1], (*numbers)[0], 1990);
  return day ? dateOf(*day, parts, true) : std::nullopt;
}

/// Reads the milliseconds since 1970 in "FB_IMG_1555063872123".
std::optional<FileNameDate> countedDate(NameParts parts) {
  constexpr std::size_t digits = 13;
  if (!parts.take("fb_img_") && !parts.take("mmexport")) return std::nullopt;
  if (parts.digits() != digits) return std::nullopt;
  const auto thousands = parts.takeNumber(9);
  const auto rest = parts.takeNumber(4);
  const LocalTime at{milliseconds{std::int64_t{*thousands} * 10'000 + *rest}};
  return parts.isAtBoundary() ? std::optional{FileNameDate{at, true}} : std::nullopt;
}

bool isOneOf(std::string_view text, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [&](std::string_view word) {
    NameParts parts{text};
    return text.size() == word.size() && parts.take(word);
  });
}

}  // namespace

std::optional<FileNameDate> dateOfFileName(std::string_view name) {
  const NameParts whole{BundleBuilder::splitFileName(name).stem};
  if (const auto date = countedDate(whole)) return date;
  if (const auto date = exportedDate(whole)) return date;
  NameParts parts = whole;
  const std::string_view word = parts.takeUntilDigit();
  if (const auto date = separatedDate(parts)) return date;
  const bool isOfDays = isOneOf(word, {"scan_", "scan ", "Скан_", "Скан ", "wp_"});
  auto date = compactDate(parts, !isOfDays);
  if (date) date->isUTC = isOneOf(word, {"pxl_"});
  return date;
}

}  // namespace tavrix
