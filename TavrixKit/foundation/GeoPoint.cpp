#include "foundation/GeoPoint.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tavrix {
namespace {

double radians(double degrees) { return degrees * std::numbers::pi / 180; }

double squared(double value) { return value * value; }

}  // namespace

bool isOnEarth(const GeoPoint& point) {
  // NaN fails both comparisons.
  return std::abs(point.latitude) <= 90 && std::abs(point.longitude) <= 180;
}

double haversineDistanceKm(const GeoPoint& a, const GeoPoint& b) {
  const double lat1 = radians(a.latitude);
  const double lat2 = radians(b.latitude);
  const double dlon = radians(b.longitude) - radians(a.longitude);
  const double h = squared(std::sin((lat2 - lat1) / 2)) +
                   std::cos(lat1) * std::cos(lat2) * squared(std::sin(dlon / 2));
  return earthDiameterKm * std::asin(std::min(1.0, std::sqrt(h)));
}

}  // namespace tavrix
