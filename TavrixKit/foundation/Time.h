#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavrix {

/// A moment in absolute time.
using Instant = std::chrono::sys_time<std::chrono::milliseconds>;
/// The local time of some time zone. Only a TimeZone converts between Instant and LocalTime.
using LocalTime = std::chrono::local_time<std::chrono::milliseconds>;
/// A day of the Gregorian calendar.
using CivilDate = std::chrono::year_month_day;

/// First and last moment that the program handles: years 1 to 9999 in UTC. In a local time zone the
/// calendar date may be one day outside this range.
inline constexpr Instant earliestInstant{std::chrono::sys_days{std::chrono::year{1} / 1 / 1}};
inline constexpr Instant latestInstant{std::chrono::sys_days{std::chrono::year{9999} / 12 / 31} +
                                       std::chrono::days{1} - std::chrono::milliseconds{1}};

/// Returns the moment `seconds` after 1970-01-01 00:00:00 UTC, rounded to a millisecond. Returns
/// nullopt if `seconds` is NaN or outside the years handled.
std::optional<Instant> instantFromUnixSeconds(double seconds);

/// Returns a day as year, month and day, such as "2026-05-20". The year has at least four digits.
std::string dayText(CivilDate date);
/// Return "2026-05" and "2026".
std::string monthText(CivilDate date);
std::string yearText(CivilDate date);
/// Reads a day of the form "2026-05-20". Returns nullopt if the text has another form or the day
/// does not exist.
std::optional<CivilDate> parseDay(std::string_view text);

/// Returns the moment in ISO 8601 and UTC: "2026-05-20T12:00:00Z". Milliseconds other than 0 are
/// written before the Z, as in ".123".
std::string iso8601(Instant instant);
/// Reads a text of the form that iso8601() writes. Also reads fractions of one to nine digits and
/// truncates them to milliseconds. Returns nullopt if the text has another form.
std::optional<Instant> parseIso8601(std::string_view text);

/// Reads a text of one to nine decimal digits. Returns nullopt if it is anything else.
std::optional<int> parseDigits(std::string_view text);

}  // namespace tavrix
