#include "places/GeocodedZones.h"

#include <cmath>

namespace tavrix {
namespace {

constexpr double cellsPerDegree = 100;

}  // namespace

std::optional<TimeZone> GeocodedZones::zoneAt(const GeoPoint& point) const {
  if (!(std::abs(point.latitude) <= 90) || !(std::abs(point.longitude) <= 180)) {
    return std::nullopt;
  }
  const auto rounded = [](double degrees) {
    return static_cast<int>(std::lround(degrees * cellsPerDegree));
  };
  const Cell cell{rounded(point.latitude), rounded(point.longitude)};
  const std::lock_guard lock{mutex_};
  const auto [found, isNew] = cells_.try_emplace(cell);
  if (isNew) {
    // The middle of the cell, so that the answer does not depend on who asked first.
    const auto id =
        directory_->zoneIDAt({cell.first / cellsPerDegree, cell.second / cellsPerDegree});
    if (id) found->second = zoneOf(*id);
  }
  return found->second;
}

std::optional<TimeZone> GeocodedZones::zoneOf(const std::string& id) const {
  const auto [found, isNew] = zones_.try_emplace(id);
  if (isNew) found->second = TimeZone::load(id);
  return found->second;
}

}  // namespace tavrix
