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

/// One of the 27 cells around a cell, itself among them.
std::array<std::int64_t, 3> neighbour(const std::array<std::int64_t, 3>& cell, int number) {
  return {cell[0] + number / 9 - 1, cell[1] + number / 3 % 3 - 1, cell[2] + number % 3 - 1};
}

}  // namespace

GreedyClusters::GreedyClusters(double radiusKm)
    : radiusKm_(radiusKm),
      limit_(radiusKm),
      side_(std::max(smallestSide, 2 * std::sin(radiusKm / earthDiameterKm) * sideMargin)),
      isUsable_(radiusKm >= 0 && radiusKm < halfCircumferenceKm) {}

std::uint32_t GreedyClusters::add(const GeoPoint& point, const UnitVector& vector) {
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
  const auto [around, isNew] = around_.try_emplace(middle);
  std::vector<std::uint32_t>& numbers = around->second;
  if (!isNew) return numbers;
  for (int i = 0; i < 27; ++i) {
    const auto found = cells_.find(neighbour(middle, i));
    if (found == cells_.end()) continue;
    numbers.insert(numbers.end(), found->second.begin(), found->second.end());
  }
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

/// A cluster has come to a cell or left it.
void GreedyClusters::forgetAround(const Cell& middle) {
  for (int i = 0; i < 27; ++i) around_.erase(neighbour(middle, i));
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
    forgetAround(*cluster.cell);
  }
  if (cell) {
    cells_[*cell].push_back(number);
    forgetAround(*cell);
  }
  cluster.cell = cell;
}

}  // namespace tavrix::PlaceClustering
