#pragma once

namespace tavrix {

/// A point on the Earth, in degrees. North and east are positive.
struct GeoPoint {
  double latitude = 0;
  double longitude = 0;

  friend bool operator==(const GeoPoint&, const GeoPoint&) = default;
};

/// Returns true if the latitude is from -90 to 90 and the longitude from -180 to 180.
bool isOnEarth(const GeoPoint& point);

/// Diameter of the sphere on which all distances are computed, in kilometres.
inline constexpr double earthDiameterKm = 12742.0;

/// Returns the haversine distance in kilometres (R. W. Sinnott, "Virtues of the Haversine", 1984):
/// d · asin(min(1, √h)), h = sin²(Δφ/2) + cos φ₁ · cos φ₂ · sin²(Δλ/2).
/// For nearly antipodal points the result is half the circumference, never a domain error.
double haversineDistanceKm(const GeoPoint& a, const GeoPoint& b);

}  // namespace tavrix
