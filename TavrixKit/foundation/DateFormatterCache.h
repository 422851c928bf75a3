#pragma once

#include <compare>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "foundation/TimeZone.h"

namespace tavrix {

/// Writes moments by a date pattern of Unicode (UTS #35), on the Gregorian calendar without a
/// change from the Julian one, as the wall clock of a zone shows them. From any thread.
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

/// Date formatters are costly to build: this keeps one per key and hands the same one out again.
/// From any thread.
class DateFormatterCache {
 public:
  struct Key {
    /// What the texts are for.
    enum class Kind { monthName, isoDay, dotTime };

    Kind kind = Kind::isoDay;
    std::string format;
    std::string localeID;
    std::string timeZoneID;  ///< what the tz database does not know counts as UTC

    friend auto operator<=>(const Key&, const Key&) = default;
  };

  /// That of the process.
  static DateFormatterCache& shared();

  std::shared_ptr<const DateFormatter> formatter(const Key& key);

 private:
  std::mutex mutex_;
  std::map<Key, std::shared_ptr<const DateFormatter>> formatters_;
};

/// The day form of names: "2026-05-20" in a zone.
DateFormatterCache::Key isoDayKey(const TimeZone& timeZone);

}  // namespace tavrix
