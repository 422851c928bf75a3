#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "grouping/CenterGrid.h"
#include "grouping/DistanceLimit.h"
#include "grouping/PlaceClustering.h"

namespace tavrix::PlaceClustering {

/// Clusters that grow point by point, numbered from 0 in the order of their first points. A point
/// joins the earliest cluster whose centre is within the radius (inclusive) and moves that centre.
/// If there is none, the point begins a new cluster. The cost of finding the cluster does not
/// depend on the number of clusters, unless many share one cell of the grid.
class GreedyClusters {
 public:
  /// A negative radius is treated as 0: only points at distance 0 join. If the radius is NaN, no
  /// point joins another. If it is at least half the Earth's circumference, all points are one
  /// cluster.
  explicit GreedyClusters(double radiusKm)
      : radiusKm_(radiusKm < 0 ? 0 : radiusKm), limit_(radiusKm_), grid_(radiusKm_) {}

  /// Adds a point, given with its unit vector, and returns the number of its cluster. A value that
  /// is not a point of the sphere is a cluster of its own.
  std::uint32_t add(const GeoPoint& point, const UnitVector& vector);

  std::size_t size() const { return clusters_.size(); }
  const UnitVectorSum& sum(std::uint32_t number) const { return clusters_[number].sum; }
  const GeoPoint& firstPoint(std::uint32_t number) const { return clusters_[number].firstPoint; }
  /// Returns the only point of a cluster, or the spherical mean of several points.
  GeoPoint center(std::uint32_t number) const;

 private:
  struct Growing {
    GeoPoint firstPoint;
    UnitVectorSum sum;
    UnitVector direction;  ///< of the centre
    std::optional<CenterGrid::Cell> cell;
  };

  std::optional<std::uint32_t> find(const GeoPoint& point, const UnitVector& vector);
  bool isNear(std::uint32_t number, const GeoPoint& point, const UnitVector& vector) const;
  void settle(std::uint32_t number);

  double radiusKm_;
  DistanceLimit limit_;
  CenterGrid grid_;
  std::vector<Growing> clusters_;
};

}  // namespace tavrix::PlaceClustering
