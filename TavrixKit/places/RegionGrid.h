#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "foundation/GeoPoint.h"

namespace tavrix {

/// The areas of first-level regions in the table, as a grid of cells of a fiftieth of a degree.
/// Each row of cells has runs of cells of one region, from west to east. The bytes are read in
/// place and are not trusted. They must outlive the grid.
class RegionGrid {
 public:
  static constexpr int cellsPerDegree = 50;
  static constexpr std::size_t rowCount = 180 * cellsPerDegree;
  static constexpr std::size_t columnCount = 360 * cellsPerDegree;
  static constexpr std::size_t runBytes = 4;
  static constexpr std::size_t startsBytes = (rowCount + 1) * sizeof(std::uint32_t);

  /// Creates a grid without any region.
  RegionGrid() = default;
  /// `starts` holds the index of the first run of every row, from south to north, in ascending
  /// order, and then the number of runs; 4 bytes each. A run consists of its first column and its
  /// region, 0 for none; 2 bytes each.
  RegionGrid(std::span<const std::byte> starts, std::span<const std::byte> runs)
      : starts_(starts), runs_(runs) {}

  /// Returns the number of the region whose area contains a point; 0 if there is none.
  std::uint16_t at(const GeoPoint& point) const;

 private:
  std::span<const std::byte> starts_;
  std::span<const std::byte> runs_;
};

}  // namespace tavrix
