#include "text/HomeText.h"

#include "text/HomeSentences.h"
#include "text/Measures.h"

namespace tavrix {

std::optional<std::string> placeName(Language language, const PlaceLookup* places,
                                     const GeoPoint& point) {
  if (places == nullptr) return std::nullopt;
  const auto names =
      places->names(places->placeKey(point), language == Language::russian ? "ru" : "en");
  if (!names) return std::nullopt;
  return names->cityOrRegion() ? names->cityOrRegion() : names->countryName;
}

std::vector<std::string> homesText(Language language, const std::vector<HomePeriod>& periods,
                                   const PlaceLookup* places, const DayFormat& format) {
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < periods.size(); ++i) {
    const HomePeriod& period = periods[i];
    const GeoPoint& point = period.home.center;
    const std::string name = placeName(language, places, point).value_or(pointText(point));
    const std::string first = format(period.firstDay);
    const std::string last = format(period.lastDay);
    if (i + 1 == periods.size()) {
      lines.push_back(say(language, sentences::homeSince, name, first));
    } else if (i == 0) {
      lines.push_back(say(language, sentences::homeUntil, name, last));
    } else {
      lines.push_back(say(language, sentences::homeBetween, name, first, last));
    }
  }
  return lines;
}

}  // namespace tavrix
