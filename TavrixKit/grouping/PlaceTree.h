#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "media/AssetBundle.h"
#include "media/PlaceLookup.h"

namespace tavrix {

/// The places of a library, for the user to choose from. Counts are numbers of files.
struct PlaceTree {
  struct City {
    std::string name;
    std::uint64_t count = 0;

    friend bool operator==(const City&, const City&) = default;
  };
  struct Country {
    std::string name;
    std::optional<std::string> code;  ///< ISO 3166-1 alpha-2
    std::uint64_t count = 0;
    std::vector<City> cities;  ///< most files first, then by name

    friend bool operator==(const Country&, const Country&) = default;
  };

  std::vector<Country> countries;          ///< most files first, then by name
  std::uint64_t unplacedCount = 0;         ///< files of shots without a location
  std::uint64_t unresolvedCount = 0;       ///< files of located shots whose place has no name yet
  std::vector<GeoPoint> unresolvedPoints;  ///< one point for each such place cell

  friend bool operator==(const PlaceTree&, const PlaceTree&) = default;
};

/// Returns the tree of a library with names in the language of `localeID`. Without a lookup every
/// shot is treated as unplaced. A region is listed among the cities. A place that has a city but no
/// country is listed under a country with an empty name.
PlaceTree placeTree(const std::vector<AssetBundle>& bundles, const PlaceLookup* lookup,
                    const std::string& localeID);

}  // namespace tavrix
