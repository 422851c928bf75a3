#include "interface/words/DayText.h"

#include "foundation/DateFormatterCache.h"

namespace tavrix::window {

std::string formattedDate(Language language, Instant instant, const std::string& pattern,
                          const std::string& zoneID) {
  const DateFormatterCache::Key key{DateFormatterCache::Key::Kind::isoDay, pattern,
                                    language == Language::russian ? "ru_RU" : "en_GB", zoneID};
  return DateFormatterCache::shared().formatter(key)->text(instant);
}

std::string formattedDay(Language language, CivilDate day, const std::string& pattern) {
  const Instant noon{std::chrono::sys_days{day} + std::chrono::hours{12}};
  return formattedDate(language, noon, pattern, "UTC");
}

// A pattern with day and month gives the genitive in Russian: "18 мая".
std::string dayInWords(Language language, CivilDate day) {
  return formattedDay(language, day, "d MMMM y");
}

}  // namespace tavrix::window
