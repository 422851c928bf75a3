#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "foundation/GeoPoint.h"

namespace tavrix::PlaceClustering {

/// A point of the unit sphere: x towards 0° north 0° east, y towards 90° east, z towards the pole.
using UnitVector = std::array<double, 3>;
/// Returns (cos φ · cos λ, cos φ · sin λ, sin φ).
UnitVector unitVector(const GeoPoint& point);

/// The running sum of points as unit vectors. Its direction is the spherical mean of the points.
struct UnitVectorSum {
  double x = 0;
  double y = 0;
  double z = 0;
  std::int64_t count = 0;  ///< the number of points added

  void add(const GeoPoint& point) { addVector(unitVector(point)); }
  void addVector(const UnitVector& vector);
  /// Returns the sum scaled to length 1, or nullopt if there is no mean.
  std::optional<UnitVector> direction() const;
  /// Returns the spherical mean, computed with atan2 from the parts of the sum. Returns
  /// `firstPoint` if there is no mean: no point was added, or the vectors cancel (z and the
  /// equatorial part are each at most 1e-12).
  GeoPoint center(const GeoPoint& firstPoint) const;

  friend bool operator==(const UnitVectorSum&, const UnitVectorSum&) = default;
};

/// Points that are one place.
struct Cluster {
  GeoPoint center;
  std::vector<GeoPoint> points;  ///< in the order they joined

  friend bool operator==(const Cluster&, const Cluster&) = default;
};

/// Clusters points greedily in input order: a point joins the earliest cluster whose centre is
/// within `radiusKm` and moves that centre; otherwise it begins a new cluster. The result depends
/// on the order of the points and is in creation order. Nearly linear for ordinary radii.
std::vector<Cluster> clusters(const std::vector<GeoPoint>& points, double radiusKm);

/// The result of clustering as the cluster index of each point; `centers` is in creation order.
struct Assignment {
  std::vector<std::uint32_t> clusterOfPoint;
  std::vector<GeoPoint> centers;
};
Assignment assign(const std::vector<GeoPoint>& points, double radiusKm);

}  // namespace tavrix::PlaceClustering
