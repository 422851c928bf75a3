#include "grouping/GreedyClusters.h"

namespace tavrix::PlaceClustering {

std::uint32_t GreedyClusters::add(const GeoPoint& point, const UnitVector& vector) {
  const auto found = find(point, vector);
  const auto number = found.value_or(static_cast<std::uint32_t>(clusters_.size()));
  if (!found) clusters_.push_back({point, {}, {}, {}});
  clusters_[number].sum.addVector(vector);
  if (grid_.isUsable()) settle(number);
  return number;
}

GeoPoint GreedyClusters::center(std::uint32_t number) const {
  const Growing& cluster = clusters_[number];
  return cluster.sum.count == 1 ? cluster.firstPoint : cluster.sum.center(cluster.firstPoint);
}

std::optional<std::uint32_t> GreedyClusters::find(const GeoPoint& point, const UnitVector& vector) {
  if (!grid_.isUsable()) {
    // Without a usable grid, either all points are within the radius or none is.
    const bool findsAll = radiusKm_ > 0 && !clusters_.empty();
    return findsAll ? std::optional<std::uint32_t>{0} : std::nullopt;
  }
  const auto cell = grid_.cellOf(vector);
  if (!cell) return std::nullopt;
  for (const std::uint32_t number : grid_.around(*cell)) {
    if (isNear(number, point, vector)) return number;
  }
  return std::nullopt;
}

bool GreedyClusters::isNear(std::uint32_t number, const GeoPoint& point,
                            const UnitVector& vector) const {
  return !limit_.isExceeded(clusters_[number].direction, vector,
                            [&] { return haversineDistanceKm(center(number), point); });
}

/// Moves a cluster whose sum has changed to the cell of its new centre.
void GreedyClusters::settle(std::uint32_t number) {
  Growing& cluster = clusters_[number];
  cluster.direction = cluster.sum.direction().value_or(unitVector(cluster.firstPoint));
  const auto cell = grid_.cellOf(cluster.direction);
  grid_.move(number, cluster.cell, cell);
  cluster.cell = cell;
}

}  // namespace tavrix::PlaceClustering
