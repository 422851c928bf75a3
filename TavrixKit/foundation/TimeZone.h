#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/Time.h"

namespace tavrix {

/// A time zone of the tz database. A cheap handle to an immutable table of the zone's offsets, made
/// once a zone; safe to use from any thread.
class TimeZone {
 public:
  static TimeZone utc();
  /// The zone of an identifier such as "Europe/Rome"; nothing when the database has none of that
  /// name.
  static std::optional<TimeZone> load(std::string_view id);

  const std::string& id() const;

  LocalTime toLocal(Instant instant) const;
  /// The moment at which a clock of the zone shows `local`. A time that a spring change skips is
  /// moved forward by the length of the gap; of one that occurs twice it is the first occurrence.
  Instant toInstant(LocalTime local) const;
  /// The calendar day in the zone.
  CivilDate dateAt(Instant instant) const;

  friend bool operator==(const TimeZone& a, const TimeZone& b) { return a.id() == b.id(); }

 private:
  struct Table;
  explicit TimeZone(std::shared_ptr<const Table> table) : table_(std::move(table)) {}

  std::shared_ptr<const Table> table_;
};

/// The identifier of the machine's time zone: TZ, the target of /etc/localtime or /etc/timezone;
/// "UTC" when none of them names one.
std::string systemTimeZoneID();

}  // namespace tavrix
