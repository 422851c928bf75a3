#pragma once

#include <absl/container/flat_hash_map.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "grouping/PlaceClustering.h"

namespace tavrix::PlaceClustering {

/// Cluster numbers by cells of a cubic grid over the unit sphere. A cell's edge is the chord of the
/// radius, so that every centre within the radius of a point lies in the 27 cells around it.
class CenterGrid {
 public:
  using Cell = std::array<std::int64_t, 3>;

  explicit CenterGrid(double radiusKm);

  /// Not for a radius that is negative, not a number, or half the Earth's circumference or more.
  bool isUsable() const { return isUsable_; }

  /// Nothing for what is no point of the sphere.
  std::optional<Cell> cellOf(const UnitVector& vector) const;
  /// The clusters of the 27 cells around one, in ascending order; good until the next move.
  const std::vector<std::uint32_t>& around(const Cell& middle);
  /// Visits the same clusters in no order, and keeps nothing for the next time.
  template <typename Visit>
  void visitAround(const Cell& middle, Visit visit) const {
    for (int i = 0; i < 27; ++i) {
      const auto cell = cells_.find(neighbour(middle, i));
      if (cell == cells_.end()) continue;
      for (const std::uint32_t number : cell->second) visit(number);
    }
  }
  /// Takes a cluster out of one cell and puts it into another.
  void move(std::uint32_t number, const std::optional<Cell>& from, const std::optional<Cell>& to);

 private:
  /// One of the 27 cells around a cell, itself among them.
  static Cell neighbour(const Cell& cell, int number) {
    return {cell[0] + number / 9 - 1, cell[1] + number / 3 % 3 - 1, cell[2] + number % 3 - 1};
  }
  void forgetAround(const Cell& middle);

  absl::flat_hash_map<Cell, std::vector<std::uint32_t>> cells_;
  double side_;
  bool isUsable_;
  /// What was gathered for the cells that were asked for. Shots come back to the same places, and
  /// the centres of known places hardly move.
  absl::flat_hash_map<Cell, std::vector<std::uint32_t>> around_;
};

}  // namespace tavrix::PlaceClustering
