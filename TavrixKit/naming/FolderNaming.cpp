#include "naming/FolderNaming.h"

#include <unordered_map>
#include <unordered_set>

#include "foundation/DateFormatterCache.h"
#include "naming/FolderName.h"
#include "naming/GroupPlaces.h"
#include "naming/NameRendering.h"
#include "naming/WholeFolderDates.h"

namespace tavrix::FolderNaming {
namespace {

std::optional<GroupPlaces> placesOf(const Settings& settings, const MediaGroup& group) {
  if (!settings.geocodingEnabled || !settings.places || !group.place) return std::nullopt;
  return tavrix::placesOf(
      group, *settings.places,
      NameRendering::localeID(settings.nameTemplate.language, settings.systemLocaleID));
}

/// Returns a moment that is on a day in UTC.
Instant noonOf(CivilDate day) { return std::chrono::sys_days{day} + std::chrono::hours{12}; }

NameContext contextOf(const Settings& settings, const MediaGroup& group,
                      const std::optional<GroupPlaces>& places) {
  NameContext context;
  context.dateStart = group.dateStart;
  context.dateEnd = group.dateEnd;
  context.timeZone = settings.timeZone;
  if (group.cameraDays) {
    context.dateStart = noonOf(group.cameraDays->first);
    context.dateEnd = noonOf(group.cameraDays->last);
    context.timeZone = TimeZone::utc();
  }
  if (places && !places->places.empty()) {
    const PlaceNames& names = places->places.front().names;
    context.city = places->districtOrCity(settings.severalCities);
    context.countryName = names.countryName;
    context.countryCode = names.countryCode;
  }
  return context;
}

std::string templateName(const Settings& settings, const MediaGroup& group,
                         const std::optional<GroupPlaces>& places) {
  const bool isWhole = settings.wholeFolderDates && group.calendarUnit;
  const NameContext context = contextOf(settings, group, places);
  std::string name = NameRendering::render(
      isWhole ? withWholeDates(settings.nameTemplate, *group.calendarUnit) : settings.nameTemplate,
      context, settings.systemLocaleID);
  if (name != FolderName::untitled) return name;
  if (context.dateStart) {
    return DateFormatterCache::shared()
        .formatter(isoDayKey(context.timeZone))
        ->text(*context.dateStart);
  }
  return FolderName::sanitise(settings.datelessName);
}

/// Returns the name that the user gave, or nullptr if there is none or it is empty.
const std::string* manualName(const Settings& settings, const MediaGroup& group) {
  const auto manual = settings.overrides.find(group.id);
  return manual == settings.overrides.end() || manual->second.empty() ? nullptr : &manual->second;
}

std::string nameAt(const Settings& settings, const MediaGroup& group,
                   const std::optional<GroupPlaces>& places) {
  if (const auto* const manual = manualName(settings, group)) return FolderName::sanitise(*manual);
  if (settings.nameByGroupID) return FolderName::sanitise(group.id);
  return templateName(settings, group, places);
}

/// Distinguishes equal names by a number.
class NameCounter {
 public:
  std::string numbered(const std::string& name) {
    const std::size_t count = ++counts_[name];
    return count == 1 ? name : name + " (" + std::to_string(count) + ")";
  }

 private:
  std::unordered_map<std::string, std::size_t> counts_;
};

}  // namespace

std::string initialDatelessName(Language language) {
  return language == Language::russian ? "Без даты" : "No date";
}

std::string nameGroup(const Settings& settings, const MediaGroup& group) {
  return nameAt(settings, group, placesOf(settings, group));
}

bool isNamedLikeDay(const Settings& settings, const MediaGroup& group) {
  if (!group.calendarUnit || !group.dateStart || settings.nameByGroupID) return false;
  return !settings.wholeFolderDates && manualName(settings, group) == nullptr &&
         withWholeDates(settings.nameTemplate, *group.calendarUnit) != settings.nameTemplate;
}

Result resolve(const Settings& settings, const std::vector<Shared<MediaGroup>>& groups) {
  Result result;
  result.rows.reserve(groups.size());
  NameCounter counter;
  std::unordered_set<std::string> unresolvedKeys;
  for (const Shared<MediaGroup>& group : groups) {
    const auto places = placesOf(settings, *group);
    if (places) {
      for (const GeoPoint& point : places->unresolved) {
        if (unresolvedKeys.insert(settings.places->placeKey(point)).second) {
          result.unresolvedPlaces.push_back(point);
        }
      }
    }
    std::string name = nameAt(settings, *group, places);
    if (!settings.mergeSameNames) name = counter.numbered(name);
    result.rows.push_back({std::move(name), group});
  }
  return result;
}

}  // namespace tavrix::FolderNaming
