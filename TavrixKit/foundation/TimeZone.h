#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/Time.h"

namespace tavrix {

/// A time zone of the tz database. A cheap handle to an immutable table of the zone's offsets:
/// load() builds the table, copies share it. Safe to use from any thread.
class TimeZone {
 public:
  static TimeZone utc();
  /// Returns the zone of an identifier such as "Europe/Rome". Returns nullopt if the database has
  /// no such zone.
  static std::optional<TimeZone> load(std::string_view id);

  const std::string& id() const;

  LocalTime toLocal(Instant instant) const;
  /// Returns the moment at which a clock of the zone shows `local`. A time that a spring change
  /// skips is moved forward by the length of the gap. For a time that occurs twice, returns the
  /// first occurrence.
  Instant toInstant(LocalTime local) const;
  /// Returns the calendar day in the zone.
  CivilDate dateAt(Instant instant) const;

  friend bool operator==(const TimeZone& a, const TimeZone& b) { return a.id() == b.id(); }

 private:
  struct Table;
  explicit TimeZone(std::shared_ptr<const Table> table) : table_(std::move(table)) {}

  std::shared_ptr<const Table> table_;
};

/// Returns the identifier of the zone that a value of the variable TZ names: an identifier or the
/// path of a zone file, either after an optional colon. Returns nullopt for any other value, such
/// as the rule "MSK-3".
std::optional<std::string> timeZoneOfVariable(std::string_view value);

/// Returns the identifier of the machine's time zone, from TZ, the target of /etc/localtime or
/// /etc/timezone, in this order. Returns "UTC" if none of them names a zone of the database.
std::string systemTimeZoneID();

}  // namespace tavrix
