#pragma once

#include <optional>
#include <string>

#include "foundation/GeoPoint.h"

namespace tavrix {

/// The names of a place in one language.
struct PlaceNames {
  std::optional<std::string> city;
  std::optional<std::string> countryName;
  std::optional<std::string> countryCode;  ///< ISO 3166-1 alpha-2
  std::optional<std::string> region{};     ///< only for a place that belongs to no city

  /// Returns the name below the country by which the place is named, chosen and counted.
  const std::optional<std::string>& cityOrRegion() const { return city ? city : region; }

  friend bool operator==(const PlaceNames&, const PlaceNames&) = default;
};

/// Names for points on the Earth. All points of a place cell have the same names; a place filter
/// tests the names of the cell.
class PlaceLookup {
 public:
  virtual ~PlaceLookup() = default;
  /// Returns the key of the cell that contains a point.
  virtual std::string placeKey(const GeoPoint& point) const = 0;
  /// Returns the names of a cell in the language of a locale, or nullopt if they are not known yet.
  virtual std::optional<PlaceNames> names(const std::string& placeKey,
                                          const std::string& localeID) const = 0;
};

}  // namespace tavrix
