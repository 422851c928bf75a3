#pragma once

#include <absl/container/flat_hash_map.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "grouping/PlaceClustering.h"

namespace tavrix::PlaceClustering {

/// Cluster numbers, indexed by the cells of a cubic grid over the unit sphere. A cell's edge is the
/// chord of the radius, so every centre within the radius of a point is in the 27 cells around it.
class CenterGrid {
 public:
  using Cell = std::array<std::int64_t, 3>;

  explicit CenterGrid(double radiusKm);

  /// Returns false if the radius is negative, NaN, or at least half the Earth's circumference.
  bool isUsable() const { return isUsable_; }

  /// Returns the cell of a vector, or nullopt if the vector is not a point of the sphere.
  std::optional<Cell> cellOf(const UnitVector& vector) const;
  /// Returns the clusters of the 27 cells around `middle`, in ascending order. The reference is
  /// valid until the next call of around() or move().
  const std::vector<std::uint32_t>& around(const Cell& middle);
  /// Visits the same clusters in no particular order and does not cache them.
  template <typename Visit>
  void visitAround(const Cell& middle, Visit visit) const {
    for (int i = 0; i < 27; ++i) {
      const auto cell = cells_.find(neighbour(middle, i));
      if (cell == cells_.end()) continue;
      for (const std::uint32_t number : cell->second) visit(number);
    }
  }
  /// Moves a cluster from one cell to another; nullopt means no cell.
  void move(std::uint32_t number, const std::optional<Cell>& from, const std::optional<Cell>& to);

 private:
  /// Returns one of the 27 cells around a cell, which include the cell itself.
  static Cell neighbour(const Cell& cell, int number) {
    return {cell[0] + number / 9 - 1, cell[1] + number / 3 % 3 - 1, cell[2] + number % 3 - 1};
  }
  void forgetAround(const Cell& middle);

  absl::flat_hash_map<Cell, std::vector<std::uint32_t>> cells_;
  double side_;
  bool isUsable_;
  /// A cache of the results of around(). It pays because shots return to the same places and the
  /// centres of known places hardly move.
  absl::flat_hash_map<Cell, std::vector<std::uint32_t>> around_;
};

}  // namespace tavrix::PlaceClustering
