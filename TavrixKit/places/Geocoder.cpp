#include "places/Geocoder.h"

namespace tavrix {
namespace {

std::string idOf(const GeocodedPlace& place, std::optional<std::uint32_t> cityNumber) {
  if (cityNumber) return "city " + std::to_string(*cityNumber);
  if (place.regionNumber) return "region " + std::to_string(*place.regionNumber);
  if (!place.city && !place.region && place.countryCode) return "country " + *place.countryCode;
  return {};
}

}  // namespace

PlaceNames GeocodedPlace::names(bool mergeDistricts) const {
  const bool isMerged = mergeDistricts && mainCity.has_value();
  return {isMerged ? mainCity : city, countryName, countryCode, region,
          idOf(*this, isMerged ? mainCityNumber : cityNumber)};
}

}  // namespace tavrix
