#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "foundation/GeoPoint.h"

namespace tavrix::PlaceClustering {

/// A point of the unit sphere: x towards 0° north 0° east, y towards 90° east, z towards the pole.
using UnitVector = std::array<double, 3>;
/// (cos φ · cos λ, cos φ · sin λ, sin φ).
UnitVector unitVector(const GeoPoint& point);

/// The running sum of points as unit vectors; its direction is their spherical mean.
struct UnitVectorSum {
  double x = 0;
  double y = 0;
  double z = 0;
  std::int64_t count = 0;  ///< how many points were added

  void add(const GeoPoint& point) { addVector(unitVector(point)); }
  void addVector(const UnitVector& vector);
  /// The sum scaled to length 1; nothing when there is no mean.
  std::optional<UnitVector> direction() const;
  /// The spherical mean, by atan2 of the sum's parts; `firstPoint` when there is none because no
  /// point was added or the vectors cancel (each of z and the equatorial part at most 1e-12).
  GeoPoint center(const GeoPoint& firstPoint) const;

  friend bool operator==(const UnitVectorSum&, const UnitVectorSum&) = default;
};

/// Points that count as one place.
struct Cluster {
  GeoPoint center;
  std::vector<GeoPoint> points;  ///< in the order they joined

  friend bool operator==(const Cluster&, const Cluster&) = default;
};

/// Clusters greedily in input order: a point joins the earliest cluster whose centre lies within
/// `radiusKm`, and moves that centre; otherwise it starts a cluster. The result depends on the
/// order and is in creation order. Near linear for ordinary radii.
std::vector<Cluster> clusters(const std::vector<GeoPoint>& points, double radiusKm);

/// The same, as the index of its cluster for each point: `centers` in creation order.
struct Assignment {
  std::vector<std::uint32_t> clusterOfPoint;
  std::vector<GeoPoint> centers;
};
Assignment assign(const std::vector<GeoPoint>& points, double radiusKm);

}  // namespace tavrix::PlaceClustering
