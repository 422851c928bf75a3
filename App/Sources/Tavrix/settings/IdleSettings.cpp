#include "settings/IdleSettings.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <utility>

#include "settings/SettingKeys.h"

namespace tavrix {
namespace {

using enum IdleSetting::Reason;

/// A condition under which a setting has no effect.
struct Rule {
  std::string_view key;
  bool (*isIdle)(const Settings&);
  std::string_view other;
  IdleSetting::Reason reason = needsOther;
};

template <UIGroupingMode mode>
bool isOtherMode(const Settings& settings) {
  return settings.gathering.uiMode != mode;
}
constexpr auto outsideEvents = isOtherMode<UIGroupingMode::events>;
constexpr auto outsideTrips = isOtherMode<UIGroupingMode::trips>;

bool hasChosenHome(const Settings& settings) {
  return !outsideTrips(settings) && settings.gathering.homeOverride;
}

template <auto field, auto needed>
bool isOnWithout(const Settings& settings) {
  return at(settings, field) && !at(settings, needed);
}

using S = Settings;
using Mode = UIGroupingMode;

/// Returns true if no folder stands for a month or a year.
bool hasIdleWholeDates(const Settings& settings) {
  const Settings::Gathering& gathering = settings.gathering;
  const bool hasMonths =
      gathering.uiMode == Mode::trips ||
      (gathering.uiMode == Mode::byDate && gathering.granularity != UIGranularity::day);
  return settings.naming.wholeFolderDates && !settings.naming.nameByGroupID && !hasMonths;
}

/// At most one rule of a key applies at a time.
constexpr std::array rules{
    Rule{"liveOnlyPhoto", isOnWithout<&S::Content::liveOnlyPhoto, &S::Content::includeLive>,
         "includeLive=true"},
    Rule{"granularity", isOtherMode<UIGroupingMode::byDate>, "uiMode=byDate"},
    Rule{"eventGapHours", outsideEvents, "uiMode=events"},
    Rule{"eventGapKm", outsideEvents, "uiMode=events"},
    Rule{"eventGapKm", [](const S& s) { return !outsideEvents(s) && !s.gathering.splitByDistance; },
         "splitByDistance=true"},
    Rule{"splitByDistance",
         [](const S& s) { return outsideEvents(s) && s.gathering.splitByDistance; },
         "uiMode=events"},
    Rule{"placeRadiusKm", [](const S& s) { return !s.naming.geocodingEnabled; },
         "geocodingEnabled=true"},
    Rule{"tripDistanceKm", outsideTrips, "uiMode=trips"},
    Rule{"tripMinDays", outsideTrips, "uiMode=trips"},
    Rule{"tripCityKm", outsideTrips, "uiMode=trips"},
    Rule{"tripMaxGapHours", outsideTrips, "uiMode=trips"},
    Rule{"homeWindowMonths", outsideTrips, "uiMode=trips"},
    Rule{"homeWindowMonths", hasChosenHome, "homeOverride", overruled},
    Rule{"homeRadiusKm", outsideTrips, "uiMode=trips"},
    Rule{"homeRadiusKm", hasChosenHome, "homeOverride", overruled},
    Rule{"homePeriods", [](const S& s) { return outsideTrips(s) && s.gathering.homePeriods; },
         "uiMode=trips"},
    Rule{"homePeriods", [](const S& s) { return hasChosenHome(s) && s.gathering.homePeriods; },
         "homeOverride", overruled},
    Rule{"homeOverride", outsideTrips, "uiMode=trips"},
    Rule{"homeOverrideName", outsideTrips, "uiMode=trips"},
    Rule{"homeOverrideName",
         [](const S& s) { return !outsideTrips(s) && !s.gathering.homeOverride; }, "homeOverride"},
    Rule{"jpegQuality", [](const S& s) { return !s.layout.photoJPEG; }, "photoJPEG=true"},
    Rule{"flattenSingleKind",
         isOnWithout<&S::Layout::flattenSingleKind, &S::Layout::separatePhotoVideo>,
         "separatePhotoVideo=true"},
    Rule{"fileNamePrefixMode",
         [](const S& s) {
           return s.layout.fileNamePrefixMode == FileNamePrefixMode::custom &&
                  s.layout.customFileNamePrefix.empty();
         },
         "customFileNamePrefix"},
    Rule{"customFileNamePrefix",
         [](const S& s) {
           return s.layout.fileNamePrefixMode != FileNamePrefixMode::custom &&
                  !s.layout.customFileNamePrefix.empty();
         },
         "fileNamePrefixMode=custom"},
    Rule{"packPerGroup", isOnWithout<&S::Layout::packPerGroup, &S::Layout::packAsZip>,
         "packAsZip=true"},
    Rule{"nameTemplate", [](const S& s) { return s.naming.nameByGroupID; }, "nameByGroupID=true",
         overruled},
    Rule{"mergeDistricts", isOnWithout<&S::Naming::mergeDistricts, &S::Naming::geocodingEnabled>,
         "geocodingEnabled=true"},
    Rule{"severalCities", isOnWithout<&S::Naming::severalCities, &S::Naming::geocodingEnabled>,
         "geocodingEnabled=true"},
    Rule{"wholeFolderDates",
         [](const S& s) { return s.naming.wholeFolderDates && s.naming.nameByGroupID; },
         "nameByGroupID=true", overruled},
    Rule{"wholeFolderDates",
         [](const S& s) { return hasIdleWholeDates(s) && s.gathering.uiMode != Mode::byDate; },
         "uiMode=byDate"},
    Rule{"wholeFolderDates",
         [](const S& s) { return hasIdleWholeDates(s) && s.gathering.uiMode == Mode::byDate; },
         "granularity=month"},
    Rule{"datelessName", [](const S& s) { return s.naming.nameByGroupID; }, "nameByGroupID=true",
         overruled},
};

using IDs = std::set<std::string_view>;

IDs idsOf(const std::vector<FolderNaming::Row>& rows, bool beforeMerging) {
  IDs ids;
  for (const FolderNaming::Row& row : rows) {
    if (!beforeMerging || row.group->children.empty()) ids.insert(row.group->id);
    if (!beforeMerging) continue;
    for (const MediaGroup& child : row.group->children) ids.insert(child.id);
  }
  return ids;
}

std::optional<IdleSetting> unknownGroupsOf(std::string_view key, const IDs& known,
                                           const IDs& named) {
  IdleSetting idle{.key = key, .reason = unknownGroups};
  for (const std::string_view id : named) {
    if (!known.contains(id)) idle.ids.emplace_back(id);
  }
  return idle.ids.empty() ? std::nullopt : std::optional{std::move(idle)};
}

std::optional<IdleSetting> idleOverrides(const Settings& settings,
                                         const std::vector<FolderNaming::Row>& rows) {
  IDs named;
  for (const auto& [id, name] : settings.naming.nameOverrides) named.insert(id);
  if (named.empty()) return std::nullopt;
  return unknownGroupsOf("nameOverrides", idsOf(rows, false), named);
}

std::optional<IdleSetting> idleMerges(const Settings& settings,
                                      const std::vector<FolderNaming::Row>& rows) {
  constexpr std::string_view key = "mergesByMode";
  const auto& merges = settings.gathering.mergesByMode;
  if (merges.empty()) return std::nullopt;
  const std::string_view mode = textOf(settings.gathering.uiMode);
  const auto found = merges.find(mode);
  if (found == merges.end()) {
    return IdleSetting{.key = key, .reason = otherModes, .other = std::string{mode}};
  }
  IDs named;
  for (const auto& merge : found->second) named.insert(merge.begin(), merge.end());
  return unknownGroupsOf(key, idsOf(rows, true), named);
}

}  // namespace

std::vector<IdleSetting> idleSettings(const Settings& settings,
                                      const std::vector<std::string_view>& givenKeys,
                                      const std::vector<FolderNaming::Row>& rows) {
  std::vector<IdleSetting> found;
  for (const std::string_view key : settingKeys()) {
    if (std::find(givenKeys.begin(), givenKeys.end(), key) == givenKeys.end()) continue;
    for (const Rule& rule : rules) {
      if (rule.key != key || !rule.isIdle(settings)) continue;
      found.push_back({.key = key, .reason = rule.reason, .other = std::string{rule.other}});
    }
    std::optional<IdleSetting> byIDs;
    if (key == "nameOverrides") byIDs = idleOverrides(settings, rows);
    if (key == "mergesByMode") byIDs = idleMerges(settings, rows);
    if (byIDs) found.push_back(*std::move(byIDs));
  }
  return found;
}

}  // namespace tavrix
