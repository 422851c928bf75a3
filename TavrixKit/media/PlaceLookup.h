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
  std::optional<std::string> region{};     ///< of a place that belongs to no city

  /// What names, chooses and counts the place below its country.
  const std::optional<std::string>& cityOrRegion() const { return city ? city : region; }

  friend bool operator==(const PlaceNames&, const PlaceNames&) = default;
};

/// Names for points on the Earth. Points of one place cell share one name; the test of a place
/// filter goes by the cell, not by its names.
class PlaceLookup {
 public:
  virtual ~PlaceLookup() = default;
  /// The key of the cell that a point lies in.
  virtual std::string placeKey(const GeoPoint& point) const = 0;
  /// The names of a cell in the language of a locale; nothing while they are not known.
  virtual std::optional<PlaceNames> names(const std::string& placeKey,
                                          const std::string& localeID) const = 0;
};

}  // namespace tavrix
