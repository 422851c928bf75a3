#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "foundation/Sentence.h"
#include "foundation/TimeZone.h"
#include "grouping/MediaGroup.h"
#include "media/PlaceLookup.h"
#include "naming/NameTemplate.h"

namespace tavrix {

/// Gives every group its folder name. Pure functions, except for the place lookup in the settings.
/// The cost depends on the number of groups, not of files.
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
  double placeRadiusKm = 2.0;                 ///< radius of one place and of the lookup's cells
  std::string datelessName = initialDatelessName(Language::russian);
  std::string systemLocaleID = "ru_RU";  ///< the locale for language `system` of the template

  friend bool operator==(const Settings&, const Settings&) = default;
};

struct Row {
  std::string name;  ///< safe as a folder name
  MediaGroup group;

  friend bool operator==(const Row&, const Row&) = default;
};

struct Result {
  /// One row per group, in the order of the groups.
  std::vector<Row> rows;
  /// The places of groups whose names the lookup does not know yet, in the order of the groups, one
  /// for each cell of the lookup.
  std::vector<GeoPoint> unresolvedPlaces;

  friend bool operator==(const Result&, const Result&) = default;
};

/// Returns the sanitised name of one group, before equal names are numbered. This is the manual
/// name if it is not empty, otherwise the group's id if `nameByGroupID` is set, otherwise the
/// rendered template. If the template renders as "untitled", the name is the group's first day, or
/// `datelessName` if the group has no date.
std::string nameGroup(const Settings& settings, const MediaGroup& group);

/// Names all groups. " (2)" is appended for the second group of a name, " (3)" for the third. Names
/// are compared exactly, and a name with an appended number is not itself counted. With
/// `mergeSameNames` equal names are kept.
Result resolve(const Settings& settings, std::vector<MediaGroup> groups);

}  // namespace FolderNaming

}  // namespace tavrix
