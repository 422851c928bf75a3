#pragma once

#include <absl/container/flat_hash_map.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "grouping/DistanceLimit.h"
#include "grouping/PlaceClustering.h"

namespace tavrix::PlaceClustering {

/// Clusters that grow point by point, numbered from 0 in the order in which they were begun. A
/// point joins the earliest cluster whose centre lies within the radius, its edge included, and
/// moves that centre; otherwise it begins a cluster.
///
/// A grid of cubic cells lies over the unit sphere. A cell's edge is the chord of the radius, so
/// that every centre within the radius of a point lies in the 27 cells around it, and finding costs
/// the same however many clusters there are, unless many share one cell.
class GreedyClusters {
 public:
  /// With a radius that is negative or not a number no point joins another; with one of half the
  /// Earth's circumference or more all of them are one cluster.
  explicit GreedyClusters(double radiusKm);

  /// Takes a point, given with its unit vector, and returns the number of its cluster.
  std::uint32_t add(const GeoPoint& point, const UnitVector& vector);

  std::size_t size() const { return clusters_.size(); }
  const UnitVectorSum& sum(std::uint32_t number) const { return clusters_[number].sum; }
  const GeoPoint& firstPoint(std::uint32_t number) const { return clusters_[number].firstPoint; }
  /// The only point, or the spherical mean of several.
  GeoPoint center(std::uint32_t number) const;

 private:
  using Cell = std::array<std::int64_t, 3>;

  struct Growing {
    GeoPoint firstPoint;
    UnitVectorSum sum;
    UnitVector direction;  ///< of the centre
    std::optional<Cell> cell;
  };
  std::optional<std::uint32_t> find(const GeoPoint& point, const UnitVector& vector);
  bool isNear(std::uint32_t number, const GeoPoint& point, const UnitVector& vector) const;
  std::optional<Cell> cellOf(const UnitVector& vector) const;
  const std::vector<std::uint32_t>& numbersAround(const Cell& middle);
  void forgetAround(const Cell& middle);
  void settle(std::uint32_t number);

  double radiusKm_;
  DistanceLimit limit_;
  double side_;
  bool isUsable_;
  std::vector<Growing> clusters_;
  absl::flat_hash_map<Cell, std::vector<std::uint32_t>> cells_;
  /// For cells that were asked for: the numbers of the clusters in the 27 cells around, ascending.
  absl::flat_hash_map<Cell, std::vector<std::uint32_t>> around_;
};

}  // namespace tavrix::PlaceClustering
