#include "grouping/CenterGrid.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tavrix::PlaceClustering {
namespace {

constexpr double halfCircumferenceKm = std::numbers::pi * earthDiameterKm / 2;
/// About six millimetres. Smaller cells are not needed for small radii.
constexpr double smallestSide = 1e-9;
/// Makes cells larger than the chord, by more than rounding can move a centre.
constexpr double sideMargin = 1 + 1e-9;

}  // namespace

CenterGrid::CenterGrid(double radiusKm)
    : side_(std::max(smallestSide, 2 * std::sin(radiusKm / earthDiameterKm) * sideMargin)),
      isUsable_(radiusKm >= 0 && radiusKm < halfCircumferenceKm) {}

std::optional<CenterGrid::Cell> CenterGrid::cellOf(const UnitVector& vector) const {
  Cell cell{};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double value = std::floor(vector[axis] / side_);
    if (!std::isfinite(value)) return std::nullopt;
    cell[axis] = static_cast<std::int64_t>(value);
  }
  return cell;
}

const std::vector<std::uint32_t>& CenterGrid::around(const Cell& middle) {
  const auto [found, isNew] = around_.try_emplace(middle);
  std::vector<std::uint32_t>& numbers = found->second;
  if (!isNew) return numbers;
  visitAround(middle, [&](std::uint32_t number) { numbers.push_back(number); });
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

void CenterGrid::move(std::uint32_t number, const std::optional<Cell>& from,
                      const std::optional<Cell>& to) {
  if (from == to) return;
  if (from) {
    const auto found = cells_.find(*from);
    std::erase(found->second, number);
    if (found->second.empty()) cells_.erase(found);
    forgetAround(*from);
  }
  if (to) {
    cells_[*to].push_back(number);
    forgetAround(*to);
  }
}

void CenterGrid::forgetAround(const Cell& middle) {
  for (int i = 0; i < 27; ++i) around_.erase(neighbour(middle, i));
}

}  // namespace tavrix::PlaceClustering
