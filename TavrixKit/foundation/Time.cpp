#include "foundation/Time.h"

#include <fmt/compile.h>
#include <fmt/format.h>

#include <cmath>

namespace tavrix {

using namespace std::chrono;

std::optional<Instant> instantFromUnixSeconds(double value) {
  const auto limit = [](Instant instant) {
    return static_cast<double>(instant.time_since_epoch().count()) / 1000;
  };
  if (!(value >= limit(earliestInstant) && value <= limit(latestInstant))) return std::nullopt;
  return Instant{milliseconds{std::llround(value * 1000)}};
}

std::string dayText(CivilDate date) {
  return fmt::format(FMT_COMPILE("{:04}-{:02}-{:02}"), int{date.year()}, unsigned{date.month()},
                     unsigned{date.day()});
}

std::string monthText(CivilDate date) {
  return fmt::format(FMT_COMPILE("{:04}-{:02}"), int{date.year()}, unsigned{date.month()});
}

std::string yearText(CivilDate date) { return fmt::format(FMT_COMPILE("{:04}"), int{date.year()}); }

std::optional<int> parseDigits(std::string_view text) {
  if (text.empty() || text.size() > 9) return std::nullopt;
  int value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return value;
}

std::optional<CivilDate> parseDay(std::string_view text) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  const auto y = parseDigits(text.substr(0, 4));
  const auto m = parseDigits(text.substr(5, 2));
  const auto d = parseDigits(text.substr(8, 2));
  if (!y || !m || !d || *y == 0) return std::nullopt;
  const CivilDate date{year{*y}, month{static_cast<unsigned>(*m)}, day{static_cast<unsigned>(*d)}};
  if (!date.ok()) return std::nullopt;
  return date;
}

std::string iso8601(Instant instant) {
  const auto days = floor<std::chrono::days>(instant);
  const hh_mm_ss clock{instant - days};
  const auto whole =
      fmt::format(FMT_COMPILE("{}T{:02}:{:02}:{:02}"), dayText(CivilDate{days}),
                  clock.hours().count(), clock.minutes().count(), clock.seconds().count());
  const auto fraction = clock.subseconds().count();
  return fraction == 0 ? whole + "Z" : fmt::format(FMT_COMPILE("{}.{:03}Z"), whole, fraction);
}

namespace {

/// Reads the part of an ISO 8601 time after the seconds: "Z", or a fraction and "Z".
std::optional<milliseconds> parseFraction(std::string_view text) {
  if (text == "Z") return 0ms;
  if (text.size() < 3 || text.size() > 11 || text.front() != '.' || text.back() != 'Z')
    return std::nullopt;
  std::string digits{text.substr(1, text.size() - 2)};
  if (!parseDigits(digits)) return std::nullopt;
  digits.resize(3, '0');
  return milliseconds{*parseDigits(digits)};
}

}  // namespace

std::optional<Instant> parseIso8601(std::string_view text) {
  if (text.size() < 20 || text[10] != 'T' || text[13] != ':' || text[16] != ':')
    return std::nullopt;
  const auto date = parseDay(text.substr(0, 10));
  const auto h = parseDigits(text.substr(11, 2));
  const auto m = parseDigits(text.substr(14, 2));
  const auto s = parseDigits(text.substr(17, 2));
  const auto fraction = parseFraction(text.substr(19));
  if (!date || !h || !m || !s || !fraction || *h > 23 || *m > 59 || *s > 59) return std::nullopt;
  return sys_days{*date} + hours{*h} + minutes{*m} + seconds{*s} + *fraction;
}

}  // namespace tavrix
