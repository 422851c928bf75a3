#pragma once

#include <cstdint>
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
  /// Identifies the city, otherwise the region or country, in every language; empty if unknown.
  std::string id{};

  /// Returns the name below the country by which the place is named, chosen and counted.
  const std::optional<std::string>& cityOrRegion() const { return city ? city : region; }
  /// Returns the id, or a text made of the names if there is no id; empty for a place without
  /// names.
  std::string identity() const;

  friend bool operator==(const PlaceNames&, const PlaceNames&) = default;
};

inline std::string PlaceNames::identity() const {
  if (!id.empty()) return id;
  const auto& name = cityOrRegion();
  if (!name && !countryCode) return {};
  return countryCode.value_or("") + "/" + name.value_or("");
}

/// A quarter of a large city, in one language.
struct PlaceDistrict {
  std::string name;
  std::uint32_t number = 0;  ///< identifies the quarter in every language

  friend bool operator==(const PlaceDistrict&, const PlaceDistrict&) = default;
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
  /// Returns the quarter that a point of a cell is in, if it is one of the cell's city. A cell may
  /// have points in several quarters. Returns nullopt if the quarter is not known for sure, or if
  /// quarters are not told apart.
  virtual std::optional<PlaceDistrict> district(const GeoPoint& /*point*/,
                                                const std::string& /*placeKey*/,
                                                const std::string& /*localeID*/) const {
    return std::nullopt;
  }
  /// Returns the centre of a cell, or nullopt if it is not known.
  virtual std::optional<GeoPoint> center(const std::string& /*placeKey*/) const {
    return std::nullopt;
  }
};

}  // namespace tavrix
