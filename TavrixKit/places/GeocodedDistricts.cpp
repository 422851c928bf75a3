#include "places/GeocodedDistricts.h"

#include <cmath>

namespace tavrix {
namespace {

constexpr double spotsPerDegree = 500;

}  // namespace

std::optional<GeocodedDistrict> GeocodedDistricts::districtAt(const GeoPoint& point,
                                                              const std::string& localeID) const {
  if (!(std::abs(point.latitude) <= 90) || !(std::abs(point.longitude) <= 180)) {
    return std::nullopt;
  }
  const auto rounded = [](double degrees) {
    return static_cast<int>(std::lround(degrees * spotsPerDegree));
  };
  const Spot spot{rounded(point.latitude), rounded(point.longitude)};
  const std::lock_guard lock{mutex_};
  const auto [found, isNew] = languages_[cacheLanguage(localeID)].try_emplace(spot);
  if (isNew) {
    // The middle of the spot, so that the answer does not depend on who asked first.
    found->second = directory_->districtAt(
        {spot.first / spotsPerDegree, spot.second / spotsPerDegree}, localeID);
  }
  return found->second;
}

}  // namespace tavrix
