#include "interface/list/CardText.h"

#include "foundation/DateFormatterCache.h"
#include "interface/words/ListSentences.h"

namespace tavrix::window::CardText {
namespace {

std::string day(Language language, CivilDate date, bool hasMonth, bool hasYear) {
  // A pattern with day and month gives the genitive in Russian: "18 мая".
  const std::string locale = language == Language::russian ? "ru_RU" : "en_GB";
  std::string pattern = "d";
  if (hasMonth) pattern += " MMMM";
  if (hasYear) pattern += " y";
  const DateFormatterCache::Key key{DateFormatterCache::Key::Kind::isoDay, pattern, locale, "UTC"};
  const Instant noon{std::chrono::sys_days{date} + std::chrono::hours{12}};
  return DateFormatterCache::shared().formatter(key)->text(noon);
}

}  // namespace

std::string period(Language language, const DisplayGroup& folder, const TimeZone& zone) {
  const auto& group = *folder.group;
  if (!group.dateStart || !group.dateEnd) return {};
  const CivilDate first = zone.dateAt(*group.dateStart);
  const CivilDate last = zone.dateAt(*group.dateEnd);
  if (first == last) return day(language, first, true, true);
  const bool isOneYear = first.year() == last.year();
  const bool isOneMonth = isOneYear && first.month() == last.month();
  const std::string_view dash = isOneMonth ? "–" : " – ";
  return fmt::format("{}{}{}", day(language, first, !isOneMonth, !isOneYear), dash,
                     day(language, last, true, true));
}

std::string counts(Language language, const DisplayGroup& folder) {
  std::string text;
  const auto add = [&](std::uint64_t count, const CountedNoun& noun) {
    if (count == 0) return;
    if (!text.empty()) text += ", ";
    text += counted(language, count, noun);
  };
  add(folder.counts.photos, sentences::photos);
  add(folder.counts.videos, sentences::videos);
  return text;
}

std::string newFiles(Language language, const DisplayGroup& folder) {
  if (folder.newCount == 0) return {};
  return fmt::format("{}, {}", counted(language, folder.newCount, sentences::newFiles),
                     bytesText(language, folder.newBytes));
}

}  // namespace tavrix::window::CardText
