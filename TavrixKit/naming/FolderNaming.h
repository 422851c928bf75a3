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

/// Gives every group its folder name. Pure functions but for the place lookup that the settings
/// carry; the cost is by group, never by file.
namespace FolderNaming {

/// The name of the folder for groups without a date: "Без даты" or "No date".
std::string initialDatelessName(Language language);

struct Settings {
  NameTemplate nameTemplate;
  std::map<std::string, std::string, std::less<>> overrides;  ///< manual names by group id
  TimeZone timeZone = TimeZone::utc();                        ///< in which dates become days
  bool geocodingEnabled = true;                               ///< without it names have no places
  std::shared_ptr<const PlaceLookup> places;  ///< no place names while there is none
  bool nameByGroupID = false;                 ///< the group's id instead of the template
  bool mergeSameNames = false;                ///< groups of equal names share one folder
  double placeRadiusKm = 2.0;                 ///< radius of one place; the lookup's cells go by it
  std::string datelessName = initialDatelessName(Language::russian);
  std::string systemLocaleID = "ru_RU";  ///< what language `system` of the template stands for

  friend bool operator==(const Settings&, const Settings&) = default;
};

struct Row {
  std::string name;  ///< safe as a folder name
  MediaGroup group;

  friend bool operator==(const Row&, const Row&) = default;
};

struct Result {
  /// One per group, in the groups' order.
  std::vector<Row> rows;
  /// Places of groups whose names the lookup does not know yet, by their group's order, one for
  /// each of the lookup's cells.
  std::vector<GeoPoint> unresolvedPlaces;

  friend bool operator==(const Result&, const Result&) = default;
};

/// The sanitised name of one group, before names are told apart: the manual name when it is not
/// empty; or the group's id; or the rendered template; or, when that gives "untitled", the group's
/// first day, or the dateless name when the group has no date.
std::string nameGroup(const Settings& settings, const MediaGroup& group);

/// Names all groups. The second group of a name gets " (2)" after it, the third " (3)"; names are
/// compared exactly and a suffixed name is not itself counted. With `mergeSameNames` equal names
/// stay.
Result resolve(const Settings& settings, std::vector<MediaGroup> groups);

}  // namespace FolderNaming

}  // namespace tavrix
