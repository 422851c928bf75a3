#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/GeoPoint.h"
#include "grouping/CenterGrid.h"

namespace tavrix {

/// The place cells of a library: the clusters of its points, so that shots near each other share
/// one cell and one name. A cell's key is its centre, "41.9000,12.5005" with four decimals (11 m),
/// and so means the same in every run.
class PlaceCells {
 public:
  /// Clusters points, in their order, with the radius of one place.
  PlaceCells(const std::vector<GeoPoint>& points, double radiusKm);

  /// The key of the cell whose centre is nearest to a point and within the radius, the earliest of
  /// equal ones; a point without one is a cell of its own. Costs the same however many cells there
  /// are, unless many lie within the radius.
  std::string keyOf(const GeoPoint& point) const;
  /// The keys of all cells, each once.
  std::vector<std::string> keys() const;

  static std::string keyAt(const GeoPoint& center);
  /// The centre that a key stands for; nothing for a text that is no key.
  static std::optional<GeoPoint> centerOf(std::string_view key);

 private:
  struct Cell {
    GeoPoint center;
    std::string key;
  };

  template <typename Visit>
  void visitNear(const GeoPoint& point, Visit visit) const;

  double radiusKm_;
  std::vector<Cell> cells_;  ///< in the order in which they were begun
  PlaceClustering::CenterGrid grid_;
};

}  // namespace tavrix
