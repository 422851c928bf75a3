#pragma once

#include <absl/container/flat_hash_map.h>

#include <cstdint>
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
/// one cell and one name. A cluster that crosses a border is one cell on each side of it. The key
/// of a cell is its centre with four decimals (11 m), "41.9000,12.5005", so it has the same meaning
/// in every run.
class PlaceCells {
 public:
  /// Clusters points in their order; `radiusKm` is the radius of one place. The owner of the bytes
  /// of the borders must outlive the cells.
  PlaceCells(const std::vector<GeoPoint>& points, double radiusKm, const Borders& borders = {});

  /// Returns the key of the cluster whose centre is nearest to a point and within the radius, on
  /// the point's side of a border. Ties are settled by the earlier cluster. If there is no such
  /// cluster, the point is a cell of its own. The cost does not depend on the number of cells,
  /// unless many are within the radius; for a point given to the constructor it is that of a look
  /// into a hash table.
  std::string keyOf(const GeoPoint& point) const;
  /// Returns the keys of the points given to the constructor, each once.
  const std::vector<std::string>& pointKeys() const { return pointKeys_; }
  /// Returns the keys of all cells, each once.
  std::vector<std::string> keys() const;

  static std::string keyAt(const GeoPoint& center);
  /// Returns the centre of the cell with this key, or nullopt if the text is not a key.
  static std::optional<GeoPoint> centerOf(std::string_view key);

 private:
  using Country = std::optional<std::uint8_t>;
  struct Cell {
    GeoPoint center;
    std::string key;
    bool isAtBorder = false;
    std::map<Country, std::string> sides{};  ///< keys by country; only for a cell at a border
  };

  /// For each cell, those whose centres are at most twice the radius from its own; nullopt if the
  /// grid is not usable.
  using Neighbours = std::optional<std::vector<std::vector<std::uint32_t>>>;
  Neighbours neighbours() const;

  void remember(const std::vector<GeoPoint>& points, const std::vector<std::uint32_t>& cellOfPoint);
  /// Returns the key of a point whose cell is known; nullopt: it is in no cell.
  std::string keyIn(const std::optional<std::uint32_t>& cell, const GeoPoint& point) const;
  std::optional<std::uint32_t> cellAround(const GeoPoint& point) const;
  /// As cellAround(), for a point that was assigned to the cell `own`, in a fraction of the time.
  std::optional<std::uint32_t> cellAround(const GeoPoint& point, std::uint32_t own,
                                          const Neighbours& neighbours) const;
  void divide(const std::vector<GeoPoint>& points, const std::vector<std::uint32_t>& cellOfPoint);

  template <typename Visit>
  void visitNear(const GeoPoint& point, Visit visit) const;

  double radiusKm_;
  Borders borders_;
  std::vector<Cell> cells_;  ///< in the order of their first points
  PlaceClustering::CenterGrid grid_;
  std::vector<std::string> pointKeys_;
  /// Indices into the keys, by latitude and longitude.
  absl::flat_hash_map<std::pair<double, double>, std::uint32_t> keyOfPoint_;
};

}  // namespace tavrix
