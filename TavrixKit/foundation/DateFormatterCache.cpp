#include "foundation/DateFormatterCache.h"

#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

namespace tavrix {

struct DateFormatter::Format {
  icu::SimpleDateFormat format;
  std::mutex mutex;  ///< ICU formatters change their own state when they format
};

DateFormatter::DateFormatter(const std::string& format, const std::string& localeID,
                             TimeZone timeZone)
    : timeZone_(std::move(timeZone)) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Locale locale{localeID.c_str()};
  format_.reset(
      new Format{icu::SimpleDateFormat{icu::UnicodeString::fromUTF8(format), locale, status}, {}});
  // The calendar stays in GMT: text() converts with TimeZone, so names and groups agree on days.
  auto calendar =
      std::make_unique<icu::GregorianCalendar>(*icu::TimeZone::getGMT(), locale, status);
  calendar->setGregorianChange(-std::numeric_limits<UDate>::infinity(), status);
  format_->format.adoptCalendar(calendar.release());
}

DateFormatter::~DateFormatter() = default;

std::string DateFormatter::text(Instant instant) const {
  const auto wallClock = timeZone_.toLocal(instant).time_since_epoch().count();
  icu::UnicodeString text;
  {
    const std::lock_guard lock{format_->mutex};
    format_->format.format(static_cast<UDate>(wallClock), text);
  }
  std::string result;
  text.toUTF8String(result);
  return result;
}

DateFormatterCache& DateFormatterCache::shared() {
  static DateFormatterCache cache;
  return cache;
}

std::shared_ptr<const DateFormatter> DateFormatterCache::formatter(const Key& key) {
  const std::lock_guard lock{mutex_};
  auto& formatter = formatters_[key];
  if (!formatter) {
    formatter = std::make_shared<const DateFormatter>(
        key.format, key.localeID, TimeZone::load(key.timeZoneID).value_or(TimeZone::utc()));
  }
  return formatter;
}

DateFormatterCache::Key isoDayKey(const TimeZone& timeZone) {
  return {DateFormatterCache::Key::Kind::isoDay, "yyyy-MM-dd", "en_US_POSIX", timeZone.id()};
}

}  // namespace tavrix
