#include "grouping/GreedyClusters.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tavrix::PlaceClustering {
namespace {

constexpr double halfCircumferenceKm = std::numbers::pi * earthDiameterKm / 2;
/// About six millimetres: cells of small radii need not be smaller.
constexpr double smallestSide = 1e-9;
/// Cells are larger than the chord by more than what rounding may move a centre.
constexpr double sideMargin = 1 + 1e-9;

}  // namespace

GreedyClusters::GreedyClusters(double radiusKm)
    : radiusKm_(radiusKm),
      limit_(radiusKm),
      side_(std::max(smallestSide, 2 * std::sin(radiusKm / earthDiameterKm) * sideMargin)),
      isUsable_(radiusKm >= 0 && radiusKm < halfCircumferenceKm) {}

std::uint32_t GreedyClusters::add(const GeoPoint& point) {
  const UnitVector vector = unitVector(point);
  const auto found = find(point, vector);
  const auto number = found.value_or(static_cast<std::uint32_t>(clusters_.size()));
  if (!found) clusters_.push_back({point, {}, {}, {}});
  clusters_[number].sum.addVector(vector);
  if (isUsable_) settle(number);
  return number;
}

GeoPoint GreedyClusters::center(std::uint32_t number) const {
  const Growing& cluster = clusters_[number];
  return cluster.sum.count == 1 ? cluster.firstPoint : cluster.sum.center(cluster.firstPoint);
}

std::optional<std::uint32_t> GreedyClusters::find(const GeoPoint& point, const UnitVector& vector) {
  if (!isUsable_) {
    const bool findsAll = radiusKm_ >= halfCircumferenceKm && !clusters_.empty();
    return findsAll ? std::optional<std::uint32_t>{0} : std::nullopt;
  }
  const auto cell = cellOf(vector);
  if (!cell) return std::nullopt;
  for (const std::uint32_t number : numbersAround(*cell)) {
    if (isNear(number, point, vector)) return number;
  }
  return std::nullopt;
}

bool GreedyClusters::isNear(std::uint32_t number, const GeoPoint& point,
                            const UnitVector& vector) const {
  return !limit_.isExceeded(clusters_[number].direction, vector,
                            [&] { return haversineDistanceKm(center(number), point); });
}

/// Nothing for what is no point of the sphere: such a one is near nothing, not even itself.
std::optional<GreedyClusters::Cell> GreedyClusters::cellOf(const UnitVector& vector) const {
  Cell cell{};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double value = std::floor(vector[axis] / side_);
    if (!std::isfinite(value)) return std::nullopt;
    cell[axis] = static_cast<std::int64_t>(value);
  }
  return cell;
}

const std::vector<std::uint32_t>& GreedyClusters::numbersAround(const Cell& middle) {
  Surroundings& around = surroundings_[middle];
  if (around.version == version_) return around.numbers;
  around.version = version_;
  around.numbers.clear();
  for (int i = 0; i < 27; ++i) {
    const auto found =
        cells_.find({middle[0] + i / 9 - 1, middle[1] + i / 3 % 3 - 1, middle[2] + i % 3 - 1});
    if (found == cells_.end()) continue;
    around.numbers.insert(around.numbers.end(), found->second.begin(), found->second.end());
  }
  std::sort(around.numbers.begin(), around.numbers.end());
  return around.numbers;
}

/// Brings a cluster whose sum has changed to the cell of its centre.
void GreedyClusters::settle(std::uint32_t number) {
  Growing& cluster = clusters_[number];
  cluster.direction = cluster.sum.direction().value_or(unitVector(cluster.firstPoint));
  const auto cell = cellOf(cluster.direction);
  if (cell == cluster.cell) return;
  if (cluster.cell) {
    const auto found = cells_.find(*cluster.cell);
    std::erase(found->second, number);
    if (found->second.empty()) cells_.erase(found);
  }
  if (cell) cells_[*cell].push_back(number);
  cluster.cell = cell;
  ++version_;
}

}  // namespace tavrix::PlaceClustering
