#pragma once

#include <optional>
#include <string_view>

#include "foundation/Time.h"
#include "foundation/TimeZone.h"

namespace tavrix {

/// The date in a name that a phone, a messenger, a scanner or a screenshot gave a file.
struct FileNameDate {
  LocalTime at;        ///< the time on the clock of the device; noon if the name has only a day
  bool isUTC = false;  ///< the program that named the file uses UTC

  /// Returns the moment of the date, whose clock showed the time of `zone` unless it is in UTC.
  Instant instant(const TimeZone& zone) const {
    return isUTC ? Instant{at.time_since_epoch()} : zone.toInstant(at);
  }

  friend bool operator==(const FileNameDate&, const FileNameDate&) = default;
};

/// Returns the date in a file name with one of the patterns in docs/dates.md. Returns nullopt if
/// the name has no such pattern, or if the date does not exist or is not of the years 1990 to 2099
/// (1900 to 2099 for a date whose parts are separated).
std::optional<FileNameDate> dateOfFileName(std::string_view name);

}  // namespace tavrix
