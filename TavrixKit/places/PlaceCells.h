#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/GeoPoint.h"
#include "grouping/CenterGrid.h"
#include "places/Borders.h"

namespace tavrix {

/// The place cells of a library: the clusters of its points, so that shots near each other share
/// one cell and one name. A cluster that lies across a border is a cell on each side of it. A
/// cell's key is its centre, "41.9000,12.5005" with four decimals (11 m), and so means the same in
/// every run.
class PlaceCells {
 public:
  /// Clusters points, in their order, with the radius of one place. What holds the bytes of the
  /// borders must outlive the cells.
  PlaceCells(const std::vector<GeoPoint>& points, double radiusKm, const Borders& borders = {});

  /// The key of the cluster whose centre is nearest to a point and within the radius, the earliest
  /// of equal ones, on the point's side of a border; a point without one is a cell of its own.
  /// Costs the same however many cells there are, unless many lie within the radius.
  std::string keyOf(const GeoPoint& point) const;
  /// The keys of all cells, each once.
  std::vector<std::string> keys() const;

  static std::string keyAt(const GeoPoint& center);
  /// The centre that a key stands for; nothing for a text that is no key.
  static std::optional<GeoPoint> centerOf(std::string_view key);

 private:
  using Country = std::optional<std::uint8_t>;
  struct Cell {
    GeoPoint center;
    std::string key;
    bool isAtBorder = false;
    std::map<Country, std::string> sides{};  ///< the keys by country, of a cell at a border
  };

  void divide(const std::vector<GeoPoint>& points, const std::vector<std::uint32_t>& cellOfPoint);

  template <typename Visit>
  void visitNear(const GeoPoint& point, Visit visit) const;

  double radiusKm_;
  Borders borders_;
  std::vector<Cell> cells_;  ///< in the order in which they were begun
  PlaceClustering::CenterGrid grid_;
};

}  // namespace tavrix
