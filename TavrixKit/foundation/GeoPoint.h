#pragma once

namespace tavrix {

/// A place on the Earth, in degrees: latitude with north positive, longitude with east positive.
struct GeoPoint {
  double latitude = 0;
  double longitude = 0;

  friend bool operator==(const GeoPoint&, const GeoPoint&) = default;
};

/// Whether there is such a place: latitude from -90 to 90, longitude from -180 to 180.
bool isOnEarth(const GeoPoint& point);

/// Diameter of the sphere on which every distance is measured, in kilometres.
inline constexpr double earthDiameterKm = 12742.0;

/// Haversine distance in kilometres (R. W. Sinnott, "Virtues of the Haversine", 1984):
/// d · asin(min(1, √h)), h = sin²(Δφ/2) + cos φ₁ · cos φ₂ · sin²(Δλ/2).
/// Nearly antipodal points give half the circumference, never a domain error.
double haversineDistanceKm(const GeoPoint& a, const GeoPoint& b);

}  // namespace tavrix
