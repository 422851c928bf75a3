#include "naming/FolderNaming.h"

#include <unordered_map>
#include <unordered_set>

#include "foundation/DateFormatterCache.h"
#include "naming/FolderName.h"
#include "naming/NameRendering.h"

namespace tavrix::FolderNaming {
namespace {

/// The cell of a group in the place lookup and the names that the lookup has for it.
struct GroupPlace {
  std::string key;
  std::optional<PlaceNames> names;
};

std::optional<GroupPlace> placeOf(const Settings& settings, const MediaGroup& group) {
  if (!settings.geocodingEnabled || !settings.places || !group.place) return std::nullopt;
  std::string key = settings.places->placeKey(*group.place);
  auto names = settings.places->names(
      key, NameRendering::localeID(settings.nameTemplate.language, settings.systemLocaleID));
  return GroupPlace{std::move(key), std::move(names)};
}

NameContext contextOf(const Settings& settings, const MediaGroup& group,
                      const std::optional<GroupPlace>& place) {
  NameContext context;
  context.dateStart = group.dateStart;
  context.dateEnd = group.dateEnd;
  context.timeZone = settings.timeZone;
  if (place && place->names) {
    context.city = place->names->cityOrRegion();
    context.countryName = place->names->countryName;
    context.countryCode = place->names->countryCode;
  }
  return context;
}

std::string templateName(const Settings& settings, const MediaGroup& group,
                         const std::optional<GroupPlace>& place) {
  std::string name = NameRendering::render(settings.nameTemplate, contextOf(settings, group, place),
                                           settings.systemLocaleID);
  if (name != FolderName::untitled) return name;
  if (group.dateStart) {
    return DateFormatterCache::shared()
        .formatter(isoDayKey(settings.timeZone))
        ->text(*group.dateStart);
  }
  return FolderName::sanitise(settings.datelessName);
}

std::string nameAt(const Settings& settings, const MediaGroup& group,
                   const std::optional<GroupPlace>& place) {
  const auto manual = settings.overrides.find(group.id);
  if (manual != settings.overrides.end() && !manual->second.empty()) {
    return FolderName::sanitise(manual->second);
  }
  if (settings.nameByGroupID) return FolderName::sanitise(group.id);
  return templateName(settings, group, place);
}

/// Distinguishes equal names by a number.
class NameCounter {
 public:
  std::string numbered(std::string name) {
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
  return nameAt(settings, group, placeOf(settings, group));
}

Result resolve(const Settings& settings, const std::vector<Shared<MediaGroup>>& groups) {
  Result result;
  result.rows.reserve(groups.size());
  NameCounter counter;
  std::unordered_set<std::string> unresolvedKeys;
  for (const Shared<MediaGroup>& group : groups) {
    const auto place = placeOf(settings, *group);
    if (place && !place->names && unresolvedKeys.insert(place->key).second) {
      result.unresolvedPlaces.push_back(*group->place);
    }
    std::string name = nameAt(settings, *group, place);
    if (!settings.mergeSameNames) name = counter.numbered(std::move(name));
    result.rows.push_back({std::move(name), group});
  }
  return result;
}

}  // namespace tavrix::FolderNaming
