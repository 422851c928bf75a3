#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "foundation/GeoPoint.h"
#include "media/PlaceLookup.h"
#include "places/Borders.h"

namespace tavrix {

/// The answer of a geocoder for a point, in one language. If all fields are absent, the point has
/// no name.
struct GeocodedPlace {
  std::optional<std::string> city;
  /// The city of which `city` is a part, if it is one.
  std::optional<std::string> mainCity;
  std::optional<std::string> countryName;
  std::optional<std::string> countryCode;  ///< ISO 3166-1 alpha-2
  /// The first-level region; only for a point that belongs to no city.
  std::optional<std::string> region{};
  /// The numbers of `city`, `mainCity` and `region` in the source.
  std::optional<std::uint32_t> cityNumber{};
  std::optional<std::uint32_t> mainCityNumber{};
  std::optional<std::uint32_t> regionNumber{};

  /// Returns the names of the place. With `mergeDistricts` a part of a city has the city's name.
  PlaceNames names(bool mergeDistricts) const;

  friend bool operator==(const GeocodedPlace&, const GeocodedPlace&) = default;
};

/// A quarter of a large city, in one language.
struct GeocodedDistrict {
  std::string name;
  std::uint32_t number = 0;      ///< of the quarter in the source
  std::uint32_t cityNumber = 0;  ///< of the city in the source, as in GeocodedPlace

  friend bool operator==(const GeocodedDistrict&, const GeocodedDistrict&) = default;
};

/// Names points on the Earth. Safe to call from several threads.
class Geocoder {
 public:
  virtual ~Geocoder() = default;
  /// Returns the source of the answers, such as "gazetteer 20200318". If it changes, stored answers
  /// are no longer valid.
  virtual std::string source() const = 0;
  /// Returns the place of a point in the language of a locale. Returns nullopt if the geocoder
  /// cannot answer now; a later call may succeed.
  virtual std::optional<GeocodedPlace> resolve(const GeoPoint& point,
                                               const std::string& localeID) const = 0;
  /// Returns the quarter of a large city that a point is in, in the language of a locale. Returns
  /// nullopt if it is not known for sure or has no name in that language.
  virtual std::optional<GeocodedDistrict> districtAt(const GeoPoint& /*point*/,
                                                     const std::string& /*localeID*/) const {
    return std::nullopt;
  }
  /// Returns the identifier of the time zone at a point, or nullopt if it is not known.
  virtual std::optional<std::string> zoneIDAt(const GeoPoint& /*point*/) const {
    return std::nullopt;
  }
  /// Returns the borders that the answers respect, if any. They are valid as long as the geocoder
  /// exists.
  virtual Borders borders() const { return {}; }
};

}  // namespace tavrix
