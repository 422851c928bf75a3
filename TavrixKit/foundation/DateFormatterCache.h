#pragma once

#include <compare>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "foundation/TimeZone.h"

namespace tavrix {

/// Formats moments with a Unicode date pattern (UTS #35), in the local time of one time zone. Uses
/// the proleptic Gregorian calendar. Safe to use from any thread.
class DateFormatter {
 public:
  DateFormatter(const std::string& format, const std::string& localeID, TimeZone timeZone);
  ~DateFormatter();
  DateFormatter(const DateFormatter&) = delete;
  DateFormatter& operator=(const DateFormatter&) = delete;

  std::string text(Instant instant) const;

 private:
  struct Format;
  std::unique_ptr<Format> format_;
  TimeZone timeZone_;
};

/// Keeps one date formatter per key, because formatters are costly to build. Safe to use from any
/// thread.
class DateFormatterCache {
 public:
  struct Key {
    /// The purpose of the texts.
    enum class Kind { monthName, isoDay, dotTime };

    Kind kind = Kind::isoDay;
    std::string format;
    std::string localeID;
    std::string timeZoneID;  ///< UTC is used for an identifier that the tz database does not have

    friend auto operator<=>(const Key&, const Key&) = default;
  };

  /// Returns the cache of the process.
  static DateFormatterCache& shared();

  std::shared_ptr<const DateFormatter> formatter(const Key& key);

 private:
  std::mutex mutex_;
  std::map<Key, std::shared_ptr<const DateFormatter>> formatters_;
};

/// Returns the key of the day format used in names: "2026-05-20" in the given zone.
DateFormatterCache::Key isoDayKey(const TimeZone& timeZone);

}  // namespace tavrix
