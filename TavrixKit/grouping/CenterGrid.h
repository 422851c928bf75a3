#pragma once

#include <absl/container/flat_hash_map.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "foundation/GeoPoint.h"

namespace tavrix::PlaceClustering {

/// The centres of growing clusters, numbered from 0 in the order in which they were added, and
/// found by nearness. A grid of cubic cells lies over the unit sphere; where a cell's edge is the
/// chord of the radius, every centre within the radius of a point lies in the 27 cells around it.
/// So finding costs the same however many centres there are, unless many share one cell.
class CenterGrid {
 public:
  /// A radius that is negative or not a number finds nothing; one of half the Earth's circumference
  /// or more finds the first centre.
  explicit CenterGrid(double radiusKm);

  /// The lowest number of a centre within the radius of a point, its edge included.
  std::optional<std::uint32_t> earliestWithin(const GeoPoint& point);
  /// Adds a centre and returns its number.
  std::uint32_t add(const GeoPoint& center);
  void move(std::uint32_t number, const GeoPoint& center);

  const std::vector<GeoPoint>& centers() const { return centers_; }

 private:
  using Cell = std::array<std::int64_t, 3>;

  bool isNear(std::uint32_t number, const GeoPoint& point) const;
  std::optional<Cell> cellOf(const GeoPoint& point) const;
  void gatherAround(const Cell& middle);

  double radiusKm_;
  double side_;
  bool isUsable_;
  std::vector<GeoPoint> centers_;
  std::vector<std::optional<Cell>> cellOfCenter_;
  absl::flat_hash_map<Cell, std::vector<std::uint32_t>> cells_;
  /// The numbers in the 27 cells around one cell, ascending. Shots in a row are mostly near each
  /// other, so the next question is mostly about the same cell.
  std::optional<Cell> gatheredCell_;
  std::vector<std::uint32_t> gathered_;
};

}  // namespace tavrix::PlaceClustering
