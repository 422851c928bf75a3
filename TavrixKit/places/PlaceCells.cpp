#include "places/PlaceCells.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>

#include "grouping/PlaceClustering.h"

namespace tavrix {
namespace {

// The greatest length of a coordinate in a key: "-180.0000".
constexpr std::size_t longestNumber = 9;
// A cell farther than this from every border is never divided, however large the radius.
constexpr double farthestFromBorderKm = 50;

std::optional<double> degreesOf(std::string_view text, double largest) {
  double value = 0;
  if (text.empty() || text.size() > longestNumber) return std::nullopt;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return std::abs(value) <= largest ? std::optional{value} : std::nullopt;
}

/// Rounds to four decimals and normalises −0.0 to 0.0.
double rounded(double degrees) { return std::round(degrees * 10'000) / 10'000 + 0.0; }

}  // namespace

PlaceCells::PlaceCells(const std::vector<GeoPoint>& points, double radiusKm, const Borders& borders)
    : radiusKm_(radiusKm), borders_(borders), grid_(radiusKm) {
  const auto clusters = PlaceClustering::assign(points, radiusKm);
  for (const GeoPoint& center : clusters.centers) {
    const auto cell = grid_.cellOf(PlaceClustering::unitVector(center));
    grid_.move(static_cast<std::uint32_t>(cells_.size()), std::nullopt, cell);
    // The centre moves while points join. Points that are now outside the radius are still nearer
    // than twice the radius.
    const bool isAtBorder =
        borders_.areWithin(center, std::min(2 * radiusKm, farthestFromBorderKm));
    cells_.push_back({center, keyAt(center), isAtBorder});
  }
  divide(points, clusters.clusterOfPoint);
  remember(points, clusters.clusterOfPoint);
}

PlaceCells::Neighbours PlaceCells::neighbours() const {
  PlaceClustering::CenterGrid wide{2 * radiusKm_};
  if (!wide.isUsable()) return std::nullopt;
  const auto gridCellOf = [&](const Cell& cell) {
    return wide.cellOf(PlaceClustering::unitVector(cell.center));
  };
  for (std::uint32_t i = 0; i < cells_.size(); ++i) {
    wide.move(i, std::nullopt, gridCellOf(cells_[i]));
  }
  std::vector<std::vector<std::uint32_t>> result(cells_.size());
  for (std::uint32_t i = 0; i < cells_.size(); ++i) {
    const auto middle = gridCellOf(cells_[i]);
    if (!middle) continue;
    wide.visitAround(*middle, [&](std::uint32_t other) {
      const double distance = haversineDistanceKm(cells_[i].center, cells_[other].center);
      if (distance <= 2 * radiusKm_) result[i].push_back(other);
    });
  }
  return result;
}

void PlaceCells::remember(const std::vector<GeoPoint>& points,
                          const std::vector<std::uint32_t>& cellOfPoint) {
  const Neighbours near = neighbours();
  absl::flat_hash_map<std::string, std::uint32_t> indices;
  const auto indexOf = [&](const std::string& key) {
    const auto next = static_cast<std::uint32_t>(pointKeys_.size());
    const auto [index, isNew] = indices.try_emplace(key, next);
    if (isNew) pointKeys_.push_back(key);
    return index->second;
  };
  std::vector<std::optional<std::uint32_t>> indexOfCell(cells_.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const GeoPoint& point = points[i];
    const auto [found, isNew] = keyOfPoint_.try_emplace({point.latitude, point.longitude}, 0);
    if (!isNew) continue;
    const auto cell = cellAround(point, cellOfPoint[i], near);
    if (!cell || cells_[*cell].isAtBorder) {
      found->second = indexOf(keyIn(cell, point));
      continue;
    }
    auto& index = indexOfCell[*cell];
    if (!index) index = indexOf(cells_[*cell].key);
    found->second = *index;
  }
}

/// Gives each cell at a border one key for each country in which it has points.
void PlaceCells::divide(const std::vector<GeoPoint>& points,
                        const std::vector<std::uint32_t>& cellOfPoint) {
  struct Side {
    PlaceClustering::UnitVectorSum sum;
    GeoPoint first;
  };
  std::map<std::pair<std::uint32_t, Country>, Side> sides;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!cells_[cellOfPoint[i]].isAtBorder) continue;
    Side& side = sides[{cellOfPoint[i], borders_.countryAt(points[i])}];
    if (side.sum.count == 0) side.first = points[i];
    side.sum.add(points[i]);
  }
  for (const auto& [where, side] : sides) {
    cells_[where.first].sides[where.second] = keyAt(side.sum.center(side.first));
  }
}

/// Visits the cells within the radius of a point, and some that are a little farther.
template <typename Visit>
void PlaceCells::visitNear(const GeoPoint& point, Visit visit) const {
  if (!grid_.isUsable()) {
    for (std::uint32_t i = 0; i < cells_.size(); ++i) visit(i);
  } else if (const auto cell = grid_.cellOf(PlaceClustering::unitVector(point))) {
    grid_.visitAround(*cell, visit);
  }
}

std::string PlaceCells::keyOf(const GeoPoint& point) const {
  const auto known = keyOfPoint_.find({point.latitude, point.longitude});
  return known == keyOfPoint_.end() ? keyIn(cellAround(point), point) : pointKeys_[known->second];
}

namespace {

/// Finds the nearest of the cells that it is given, within a radius.
class NearestCell {
 public:
  explicit NearestCell(double radiusKm) : least_(radiusKm) {}

  void consider(std::uint32_t number, double distance) {
    const bool isBefore = distance < least_ || !nearest_ || number < *nearest_;
    if (!(distance <= least_) || !isBefore) return;
    nearest_ = number;
    least_ = distance;
  }
  std::optional<std::uint32_t> number() const { return nearest_; }

 private:
  std::optional<std::uint32_t> nearest_;
  double least_;
};

}  // namespace

std::optional<std::uint32_t> PlaceCells::cellAround(const GeoPoint& point) const {
  NearestCell nearest{radiusKm_};
  visitNear(point, [&](std::uint32_t number) {
    nearest.consider(number, haversineDistanceKm(cells_[number].center, point));
  });
  return nearest.number();
}

std::optional<std::uint32_t> PlaceCells::cellAround(const GeoPoint& point, std::uint32_t own,
                                                    const Neighbours& neighbours) const {
  // A centre that is as near as that of the own cell is at most twice as far from that.
  const bool isInside =
      neighbours && haversineDistanceKm(cells_[own].center, point) <= 0.99 * radiusKm_;
  if (!isInside) return cellAround(point);
  NearestCell nearest{radiusKm_};
  for (const std::uint32_t number : (*neighbours)[own]) {
    nearest.consider(number, haversineDistanceKm(cells_[number].center, point));
  }
  return nearest.number();
}

std::string PlaceCells::keyIn(const std::optional<std::uint32_t>& number,
                              const GeoPoint& point) const {
  if (!number) return keyAt(point);
  const Cell& cell = cells_[*number];
  if (!cell.isAtBorder) return cell.key;
  const auto side = cell.sides.find(borders_.countryAt(point));
  return side == cell.sides.end() ? keyAt(point) : side->second;
}

std::vector<std::string> PlaceCells::keys() const {
  std::vector<std::string> keys;
  keys.reserve(cells_.size());
  for (const Cell& cell : cells_) {
    if (!cell.isAtBorder) keys.push_back(cell.key);
    for (const auto& [country, key] : cell.sides) keys.push_back(key);
  }
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  return keys;
}

std::string PlaceCells::keyAt(const GeoPoint& center) {
  return fmt::format("{:.4f},{:.4f}", rounded(center.latitude), rounded(center.longitude));
}

std::optional<GeoPoint> PlaceCells::centerOf(std::string_view key) {
  const auto comma = key.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  const auto latitude = degreesOf(key.substr(0, comma), 90);
  const auto longitude = degreesOf(key.substr(comma + 1), 180);
  if (!latitude || !longitude) return std::nullopt;
  return GeoPoint{*latitude, *longitude};
}

}  // namespace tavrix
