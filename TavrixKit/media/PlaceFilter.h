#pragma once

#include <set>
#include <string>

#include "media/PlaceLookup.h"

namespace tavrix {

/// Restricts shots to chosen places. A shot passes if its city (or its region, if it has no city)
/// or its country is chosen.
struct PlaceFilter {
  std::set<std::string> countries;
  std::set<std::string> cities;
  bool includeUnplaced = false;    ///< shots without a location
  bool includeUnresolved = false;  ///< located shots whose place has no name yet
  std::string localeID;            ///< the language of the names above

  /// Returns true if a place of these names is chosen.
  bool matches(const PlaceNames& names) const {
    const auto& city = names.cityOrRegion();
    return (city && cities.contains(*city)) ||
           (names.countryName && countries.contains(*names.countryName));
  }

  friend bool operator==(const PlaceFilter&, const PlaceFilter&) = default;
};

}  // namespace tavrix
