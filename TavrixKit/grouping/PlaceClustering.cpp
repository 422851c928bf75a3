#include "grouping/PlaceClustering.h"

#include <absl/container/flat_hash_map.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <optional>

namespace tavrix::PlaceClustering {
namespace {

constexpr double halfCircumferenceKm = std::numbers::pi * earthDiameterKm / 2;
constexpr double smallestSide = 1e-9;
constexpr double cancelled = 1e-12;

std::array<double, 3> unitVector(const GeoPoint& point) {
  const double lat = point.latitude * std::numbers::pi / 180;
  const double lon = point.longitude * std::numbers::pi / 180;
  return {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
}

/// Cluster indices by cells of a cubic grid over the unit sphere. Where the cell's edge is the
/// chord of the radius, every centre within the radius of a point lies in the 27 cells around it.
class CenterGrid {
 public:
  explicit CenterGrid(double radiusKm)
      : side_(2 * std::sin(radiusKm / earthDiameterKm)),
        isUsable_(radiusKm > 0 && radiusKm < halfCircumferenceKm && std::isfinite(side_) &&
                  side_ > smallestSide) {}

  bool isUsable() const { return isUsable_; }

  void insert(std::uint32_t index, const GeoPoint& center) {
    cells_[cellOf(center)].push_back(index);
  }

  void move(std::uint32_t index, const GeoPoint& from, const GeoPoint& to) {
    const Cell before = cellOf(from);
    if (before == cellOf(to)) return;
    const auto found = cells_.find(before);
    std::erase(found->second, index);
    if (found->second.empty()) cells_.erase(found);
    insert(index, to);
  }

  /// The lowest index in the cells around a point that `isNear` accepts.
  template <typename Predicate>
  std::optional<std::uint32_t> lowestAround(const GeoPoint& point, Predicate isNear) const {
    const Cell middle = cellOf(point);
    std::optional<std::uint32_t> lowest;
    for (int i = 0; i < 27; ++i) {
      const auto found =
          cells_.find({middle[0] + i / 9 - 1, middle[1] + i / 3 % 3 - 1, middle[2] + i % 3 - 1});
      if (found == cells_.end()) continue;
      for (const std::uint32_t index : found->second) {
        if ((!lowest || index < *lowest) && isNear(index)) lowest = index;
      }
    }
    return lowest;
  }

 private:
  using Cell = std::array<std::int64_t, 3>;

  Cell cellOf(const GeoPoint& point) const {
    Cell cell{};
    const auto vector = unitVector(point);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double value = std::floor(vector[axis] / side_);
      // A unit vector's parts over a side above 1e-9 always fit; anything else is no point at all.
      if (!(std::abs(value) < 1e15)) std::abort();
      cell[axis] = static_cast<std::int64_t>(value);
    }
    return cell;
  }

  double side_;
  bool isUsable_;
  absl::flat_hash_map<Cell, std::vector<std::uint32_t>> cells_;
};

class Clusterer {
 public:
  explicit Clusterer(double radiusKm) : radiusKm_(radiusKm), grid_(radiusKm) {}

  std::uint32_t add(const GeoPoint& point) {
    const auto found = find(point);
    if (!found) return create(point);
    Place& place = places_[*found];
    place.sum.add(point);
    const GeoPoint center = place.sum.center(place.firstPoint);
    if (grid_.isUsable()) grid_.move(*found, place.center, center);
    place.center = center;
    return *found;
  }

  std::vector<GeoPoint> centers() const {
    std::vector<GeoPoint> result;
    result.reserve(places_.size());
    for (const Place& place : places_) result.push_back(place.center);
    return result;
  }

 private:
  struct Place {
    GeoPoint center;
    GeoPoint firstPoint;
    UnitVectorSum sum;
  };

  std::optional<std::uint32_t> find(const GeoPoint& point) const {
    const auto isNear = [&](std::uint32_t index) {
      return haversineDistanceKm(places_[index].center, point) <= radiusKm_;
    };
    if (grid_.isUsable()) return grid_.lowestAround(point, isNear);
    for (std::uint32_t index = 0; index < places_.size(); ++index) {
      if (isNear(index)) return index;
    }
    return std::nullopt;
  }

  std::uint32_t create(const GeoPoint& point) {
    const auto index = static_cast<std::uint32_t>(places_.size());
    places_.push_back({point, point, {}});
    places_.back().sum.add(point);
    if (grid_.isUsable()) grid_.insert(index, point);
    return index;
  }

  double radiusKm_;
  CenterGrid grid_;
  std::vector<Place> places_;
};

}  // namespace

void UnitVectorSum::add(const GeoPoint& point) {
  const auto vector = unitVector(point);
  x += vector[0];
  y += vector[1];
  z += vector[2];
  ++count;
}

GeoPoint UnitVectorSum::center(const GeoPoint& firstPoint) const {
  const double equatorial = std::sqrt(x * x + y * y);
  if (count < 1 || (equatorial <= cancelled && std::abs(z) <= cancelled)) return firstPoint;
  return {std::atan2(z, equatorial) * 180 / std::numbers::pi,
          std::atan2(y, x) * 180 / std::numbers::pi};
}

Assignment assign(const std::vector<GeoPoint>& points, double radiusKm) {
  Clusterer clusterer{radiusKm};
  Assignment assignment;
  assignment.clusterOfPoint.reserve(points.size());
  for (const GeoPoint& point : points) assignment.clusterOfPoint.push_back(clusterer.add(point));
  assignment.centers = clusterer.centers();
  return assignment;
}

std::vector<Cluster> clusters(const std::vector<GeoPoint>& points, double radiusKm) {
  const Assignment assignment = assign(points, radiusKm);
  std::vector<Cluster> result;
  result.reserve(assignment.centers.size());
  for (const GeoPoint& center : assignment.centers) result.push_back({center, {}});
  for (std::size_t i = 0; i < points.size(); ++i) {
    result[assignment.clusterOfPoint[i]].points.push_back(points[i]);
  }
  return result;
}

}  // namespace tavrix::PlaceClustering
