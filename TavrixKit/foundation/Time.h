#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavrix {

/// A moment in absolute time.
using Instant = std::chrono::sys_time<std::chrono::milliseconds>;
/// A wall-clock time: what a clock on the wall of some zone shows. Only a TimeZone relates the two.
using LocalTime = std::chrono::local_time<std::chrono::milliseconds>;
/// A day of the Gregorian calendar.
using CivilDate = std::chrono::year_month_day;

/// First and last moment that the program handles: years 1 to 9999 in UTC. Far from Greenwich the
/// calendar may show one day more.
inline constexpr Instant earliestInstant{std::chrono::sys_days{std::chrono::year{1} / 1 / 1}};
inline constexpr Instant latestInstant{std::chrono::sys_days{std::chrono::year{9999} / 12 / 31} +
                                       std::chrono::days{1} - std::chrono::milliseconds{1}};

/// The moment `seconds` after 1970-01-01 00:00:00 UTC, rounded to a millisecond; nothing when it is
/// not a number or lies outside the years handled.
std::optional<Instant> instantFromUnixSeconds(double seconds);

/// "2026-05-20": a day as year, month, day (the year with four digits at least).
std::string dayText(CivilDate date);
/// "2026-05" and "2026".
std::string monthText(CivilDate date);
std::string yearText(CivilDate date);
/// Reads a day of the form "2026-05-20"; nothing for anything else or a day that does not exist.
std::optional<CivilDate> parseDay(std::string_view text);

/// ISO 8601 in UTC: "2026-05-20T12:00:00Z", with ".123" before the Z only when there are
/// milliseconds.
std::string iso8601(Instant instant);
/// The reverse of iso8601; nothing for anything else. Fractions of one to nine digits are read and
/// cut to milliseconds.
std::optional<Instant> parseIso8601(std::string_view text);

/// Reads exactly `text.size()` decimal digits; nothing when any character is not a digit.
std::optional<int> parseDigits(std::string_view text);

}  // namespace tavrix
