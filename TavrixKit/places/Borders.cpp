#include "places/Borders.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <numbers>

#include "places/TableBytes.h"

namespace tavrix {
namespace {

using TableBytes::bandOf;
using TableBytes::degreesAt;
using TableBytes::kmPerDegree;

constexpr std::size_t mostCountries = 256;

struct Offset {
  double east;  ///< both in kilometres
  double north;
};

/// Returns the distance from the origin to the straight segment between two points.
double distanceToLine(const Offset& one, const Offset& other) {
  const double east = other.east - one.east;
  const double north = other.north - one.north;
  const double length = east * east + north * north;
  const double along = length > 0 ? -(one.east * east + one.north * north) / length : 0;
  const double share = std::clamp(along, 0.0, 1.0);
  return std::hypot(one.east + share * east, one.north + share * north);
}

}  // namespace

template <typename Visit>
void Borders::visitBand(std::size_t band, Visit visit) const {
  if (starts_.empty()) return;
  const auto startAt = [&](std::size_t at) {
    return TableBytes::littleEndian<std::uint32_t>(starts_.data() + at * sizeof(std::uint32_t));
  };
  const std::size_t last = startAt(band + 1);
  for (std::size_t i = startAt(band); i < last; ++i) {
    const std::byte* const at = sides_.data() + i * sideBytes;
    visit(Side{{degreesAt(at), degreesAt(at + 4)},
               {degreesAt(at + 8), degreesAt(at + 12)},
               std::to_integer<std::uint8_t>(at[16])});
  }
}

/// A point is inside an area if the area has an odd number of sides west of it.
std::optional<std::uint8_t> Borders::countryAt(const GeoPoint& point) const {
  if (!std::isfinite(point.latitude) || !std::isfinite(point.longitude)) return std::nullopt;
  const double longitude = std::remainder(point.longitude, 360);
  std::bitset<mostCountries> isInside;
  visitBand(bandOf(point.latitude), [&](const Side& side) {
    if ((side.south.latitude > point.latitude) == (side.north.latitude > point.latitude)) return;
    const double share =
        (point.latitude - side.south.latitude) / (side.north.latitude - side.south.latitude);
    const double crossing =
        side.south.longitude + share * (side.north.longitude - side.south.longitude);
    if (longitude > crossing) isInside.flip(side.country);
  });
  for (std::size_t country = 0; country < mostCountries; ++country) {
    if (isInside[country]) return static_cast<std::uint8_t>(country);
  }
  return std::nullopt;
}

bool Borders::areWithin(const GeoPoint& point, double km) const {
  if (!std::isfinite(point.latitude) || !std::isfinite(point.longitude)) return false;
  const double degrees = km / kmPerDegree;
  // Distances are measured on a flat map around the point.
  const double kmOfLongitude = std::cos(point.latitude * std::numbers::pi / 180) * kmPerDegree;
  const double longitude = std::remainder(point.longitude, 360);
  const auto seen = [&](const GeoPoint& corner) {
    double east = corner.longitude - longitude;
    if (east > 180) east -= 360;
    if (east < -180) east += 360;
    return Offset{east * kmOfLongitude, (corner.latitude - point.latitude) * kmPerDegree};
  };
  bool isNear = false;
  const std::size_t last = bandOf(point.latitude + degrees);
  for (std::size_t band = bandOf(point.latitude - degrees); band <= last && !isNear; ++band) {
    visitBand(band, [&](const Side& side) {
      const Offset south = seen(side.south);
      const Offset north = seen(side.north);
      const bool isAside =
          std::min(south.east, north.east) > km || std::max(south.east, north.east) < -km;
      isNear = isNear || (!isAside && distanceToLine(south, north) <= km);
    });
  }
  return isNear;
}

}  // namespace tavrix
