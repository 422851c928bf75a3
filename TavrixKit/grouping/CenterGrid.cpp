#include "grouping/CenterGrid.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "grouping/PlaceClustering.h"

namespace tavrix::PlaceClustering {
namespace {

constexpr double halfCircumferenceKm = std::numbers::pi * earthDiameterKm / 2;
/// About six millimetres: cells of small radii need not be smaller.
constexpr double smallestSide = 1e-9;

}  // namespace

CenterGrid::CenterGrid(double radiusKm)
    : radiusKm_(radiusKm),
      side_(std::max(smallestSide, 2 * std::sin(radiusKm / earthDiameterKm))),
      isUsable_(radiusKm >= 0 && radiusKm < halfCircumferenceKm) {}

std::optional<std::uint32_t> CenterGrid::earliestWithin(const GeoPoint& point) {
  if (!isUsable_) {
    const bool findsAll = radiusKm_ >= halfCircumferenceKm && !centers_.empty();
    return findsAll ? std::optional<std::uint32_t>{0} : std::nullopt;
  }
  const auto cell = cellOf(point);
  if (!cell) return std::nullopt;
  if (gatheredCell_ != cell) gatherAround(*cell);
  for (const std::uint32_t number : gathered_) {
    if (isNear(number, point)) return number;
  }
  return std::nullopt;
}

std::uint32_t CenterGrid::add(const GeoPoint& center) {
  const auto number = static_cast<std::uint32_t>(centers_.size());
  centers_.push_back(center);
  if (!isUsable_) return number;
  cellOfCenter_.push_back(cellOf(center));
  if (const auto& cell = cellOfCenter_.back()) cells_[*cell].push_back(number);
  gatheredCell_.reset();
  return number;
}

void CenterGrid::move(std::uint32_t number, const GeoPoint& center) {
  centers_[number] = center;
  if (!isUsable_) return;
  const auto cell = cellOf(center);
  auto& before = cellOfCenter_[number];
  if (cell == before) return;
  if (before) {
    const auto found = cells_.find(*before);
    std::erase(found->second, number);
    if (found->second.empty()) cells_.erase(found);
  }
  if (cell) cells_[*cell].push_back(number);
  before = cell;
  gatheredCell_.reset();
}

bool CenterGrid::isNear(std::uint32_t number, const GeoPoint& point) const {
  return haversineDistanceKm(centers_[number], point) <= radiusKm_;
}

/// Nothing for what is no point of the sphere: such a one is near nothing, not even itself.
std::optional<CenterGrid::Cell> CenterGrid::cellOf(const GeoPoint& point) const {
  Cell cell{};
  const auto vector = unitVector(point);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double value = std::floor(vector[axis] / side_);
    if (!std::isfinite(value)) return std::nullopt;
    cell[axis] = static_cast<std::int64_t>(value);
  }
  return cell;
}

void CenterGrid::gatherAround(const Cell& middle) {
  gatheredCell_ = middle;
  gathered_.clear();
  for (int i = 0; i < 27; ++i) {
    const auto found =
        cells_.find({middle[0] + i / 9 - 1, middle[1] + i / 3 % 3 - 1, middle[2] + i % 3 - 1});
    if (found == cells_.end()) continue;
    gathered_.insert(gathered_.end(), found->second.begin(), found->second.end());
  }
  std::sort(gathered_.begin(), gathered_.end());
}

}  // namespace tavrix::PlaceClustering
