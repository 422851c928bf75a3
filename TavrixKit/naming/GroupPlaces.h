#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "grouping/MediaGroup.h"
#include "media/PlaceLookup.h"

namespace tavrix {

/// The cities of the shots of a group. The place of a shot in open country is its region, or
/// its country if the region has no name.
struct GroupPlaces {
  struct Place {
    PlaceNames names;
    std::string key;        ///< of the cell of this place that is nearest to the group's centre
    GeoPoint center;        ///< of that cell
    std::size_t shots = 0;  ///< the number of the group's shots there

    friend bool operator==(const Place&, const Place&) = default;
  };

  std::vector<Place> places;  ///< most shots first; between equals the first in capture order
  std::size_t locatedShots = 0;
  /// The quarter of the first place in which more than half of the located shots are.
  std::optional<PlaceDistrict> district;
  /// One shot's position for each cell that has no names yet, in capture order.
  std::vector<GeoPoint> unresolved;

  /// Returns the name of the city with most shots, otherwise of the region. With `severalCities`,
  /// and if no place has half of the located shots, returns the names of the two largest places,
  /// joined with ", ". Returns nullopt if the largest place has only a country.
  std::optional<std::string> city(bool severalCities) const;
  /// Returns the name of the quarter, otherwise city().
  std::optional<std::string> districtOrCity(bool severalCities) const {
    return district ? std::optional{district->name} : city(severalCities);
  }

  friend bool operator==(const GroupPlaces&, const GroupPlaces&) = default;
};

/// Counts the located shots of a group by the places of their cells, named in the language of a
/// locale. The cost grows with the number of shots.
GroupPlaces placesOf(const MediaGroup& group, const PlaceLookup& lookup,
                     const std::string& localeID);

}  // namespace tavrix
