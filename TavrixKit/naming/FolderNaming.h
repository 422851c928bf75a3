#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Sentence.h"
#include "foundation/Shared.h"
#include "foundation/TimeZone.h"
#include "grouping/MediaGroup.h"
#include "media/PlaceLookup.h"
#include "naming/NameTemplate.h"

namespace tavrix {

/// Gives every group its folder name. Pure functions, except for the place lookup in the settings.
/// The cost depends on the number of groups and, with a place lookup, of shots.
namespace FolderNaming {

/// Returns the initial name of the folder for groups without a date: "Без даты" or "No date".
std::string initialDatelessName(Language language);

struct Settings {
  NameTemplate nameTemplate;
  std::map<std::string, std::string, std::less<>> overrides;  ///< manual names by group id
  TimeZone timeZone = TimeZone::utc();                        ///< the zone of the days in names
  bool geocodingEnabled = true;                               ///< if false, names have no places
  std::shared_ptr<const PlaceLookup> places;  ///< if null, names contain no place names
  bool nameByGroupID = false;                 ///< the group's id instead of the template
  bool mergeSameNames = false;                ///< groups of equal names share one folder
  std::string datelessName = initialDatelessName(Language::russian);
  std::string systemLocaleID = "ru_RU";  ///< the locale for language `system` of the template
  /// Names a group after its two largest cities if none has half of its shots.
  bool severalCities = false;
  /// Leaves the day out of the names of groups that stand for a month or a year, and the month out
  /// of those that stand for a year.
  bool wholeFolderDates = false;

  friend bool operator==(const Settings&, const Settings&) = default;
};

/// A group with its folder name.
struct Row {
  std::string name;  ///< safe as a folder name
  Shared<MediaGroup> group;
  /// The name by the settings, if the group continues a folder that has another name.
  std::optional<std::string> templateName{};

  friend bool operator==(const Row&, const Row&) = default;
};

struct Result {
  /// One row per group, in the order of the groups.
  std::vector<Row> rows;
  /// Positions of shots that the lookup cannot name yet, in the order of the groups, one per cell.
  std::vector<GeoPoint> unresolvedPlaces;

  friend bool operator==(const Result&, const Result&) = default;
};

/// Returns the sanitised name of one group, before equal names are numbered. This is the manual
/// name if it is not empty, otherwise the group's id if `nameByGroupID` is set, otherwise the
/// rendered template. If the template renders as "untitled", the name is the group's first day, or
/// `datelessName` if the group has no date.
std::string nameGroup(const Settings& settings, const MediaGroup& group);

/// Returns true if the group stands for a month or a year, but its name has a day or a month that
/// `wholeFolderDates` would leave out.
bool isNamedLikeDay(const Settings& settings, const MediaGroup& group);

/// Names all groups, in their order. The second group of a name gets " (2)" appended, the third
/// " (3)". Names are compared byte by byte, and numbered names are not compared again, so two rows
/// can still have equal names or names that differ only in letter case. With `mergeSameNames`
/// nothing is appended.
Result resolve(const Settings& settings, const std::vector<Shared<MediaGroup>>& groups);

}  // namespace FolderNaming

}  // namespace tavrix
