#include "places/RegionGrid.h"

#include <algorithm>
#include <cmath>

#include "places/TableBytes.h"

namespace tavrix {
namespace {

using TableBytes::littleEndian;

std::size_t cellOf(double degrees, std::size_t count) {
  const double cell = std::floor(degrees * RegionGrid::cellsPerDegree);
  return static_cast<std::size_t>(std::clamp(cell, 0.0, static_cast<double>(count - 1)));
}

}  // namespace

std::uint16_t RegionGrid::at(const GeoPoint& point) const {
  if (starts_.empty() || !std::isfinite(point.latitude) || !std::isfinite(point.longitude)) {
    return 0;
  }
  const std::size_t row = cellOf(point.latitude + 90, rowCount);
  const std::size_t column = cellOf(std::remainder(point.longitude, 360) + 180, columnCount);
  const auto startAt = [&](std::size_t at) {
    return std::size_t{littleEndian<std::uint32_t>(starts_.data() + at * sizeof(std::uint32_t))};
  };
  const auto columnAt = [&](std::size_t run) {
    return littleEndian<std::uint16_t>(runs_.data() + run * runBytes);
  };
  const std::size_t first = startAt(row);
  std::size_t low = first;
  std::size_t high = startAt(row + 1);
  // Finds the run behind the one with the column.
  while (low < high) {
    const std::size_t middle = low + (high - low) / 2;
    if (columnAt(middle) <= column) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low == first ? 0 : littleEndian<std::uint16_t>(runs_.data() + (low - 1) * runBytes + 2);
}

}  // namespace tavrix
