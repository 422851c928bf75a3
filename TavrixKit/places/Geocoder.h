#pragma once

#include <optional>
#include <string>

#include "foundation/GeoPoint.h"
#include "media/PlaceLookup.h"
#include "places/Borders.h"

namespace tavrix {

/// What a geocoder knows of a point, in one language. All absent: there is nothing there to be
/// named.
struct GeocodedPlace {
  std::optional<std::string> city;
  /// The city that this one is a part of, when it is.
  std::optional<std::string> mainCity;
  std::optional<std::string> countryName;
  std::optional<std::string> countryCode;  ///< ISO 3166-1 alpha-2
  /// The first-level region, of a point that belongs to no city.
  std::optional<std::string> region{};

  /// The names of the place, with the parts of a city under the city's name if so wished.
  PlaceNames names(bool mergeDistricts) const {
    return {mergeDistricts && mainCity ? mainCity : city, countryName, countryCode, region};
  }

  friend bool operator==(const GeocodedPlace&, const GeocodedPlace&) = default;
};

/// Names points on the Earth. Safe to call from several threads.
class Geocoder {
 public:
  virtual ~Geocoder() = default;
  /// What the answers come from, such as "gazetteer 20200318"; when it changes, answers that were
  /// kept no longer hold.
  virtual std::string source() const = 0;
  /// The place of a point in the language of a locale; nothing when it cannot be told now, and
  /// asking later may help.
  virtual std::optional<GeocodedPlace> resolve(const GeoPoint& point,
                                               const std::string& localeID) const = 0;
  /// The borders that the answers go by, if any; they hold as long as the geocoder lives.
  virtual Borders borders() const { return {}; }
};

}  // namespace tavrix
