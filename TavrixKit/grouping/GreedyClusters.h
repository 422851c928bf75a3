#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "grouping/CenterGrid.h"
#include "grouping/DistanceLimit.h"
#include "grouping/PlaceClustering.h"

namespace tavrix::PlaceClustering {

/// Clusters that grow point by point, numbered from 0 in the order in which they were begun. A
/// point joins the earliest cluster whose centre lies within the radius, its edge included, and
/// moves that centre; otherwise it begins a cluster. Finding it costs the same however many there
/// are, unless many share one cell of the grid.
class GreedyClusters {
 public:
  /// A negative radius is that of 0, which points at distance 0 alone lie within. With one that is
  /// not a number no point joins another; with one of half the Earth's circumference or more all of
  /// them are one cluster.
  explicit GreedyClusters(double radiusKm)
      : radiusKm_(radiusKm < 0 ? 0 : radiusKm), limit_(radiusKm_), grid_(radiusKm_) {}

  /// Takes a point, given with its unit vector, and returns the number of its cluster. What is no
  /// point of the sphere is a cluster of its own.
  std::uint32_t add(const GeoPoint& point, const UnitVector& vector);

  std::size_t size() const { return clusters_.size(); }
  const UnitVectorSum& sum(std::uint32_t number) const { return clusters_[number].sum; }
  const GeoPoint& firstPoint(std::uint32_t number) const { return clusters_[number].firstPoint; }
  /// The only point, or the spherical mean of several.
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
