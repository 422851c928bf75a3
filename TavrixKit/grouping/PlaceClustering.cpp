#include "grouping/PlaceClustering.h"

#include <cmath>
#include <numbers>

#include "grouping/CenterGrid.h"

namespace tavrix::PlaceClustering {
namespace {

constexpr double cancelled = 1e-12;

class Clusterer {
 public:
  explicit Clusterer(double radiusKm) : grid_(radiusKm) {}

  std::uint32_t add(const GeoPoint& point) {
    const auto found = grid_.earliestWithin(point);
    if (!found) return create(point);
    Place& place = places_[*found];
    place.sum.add(point);
    grid_.move(*found, place.sum.center(place.firstPoint));
    return *found;
  }

  const std::vector<GeoPoint>& centers() const { return grid_.centers(); }

 private:
  struct Place {
    GeoPoint firstPoint;
    UnitVectorSum sum;
  };

  std::uint32_t create(const GeoPoint& point) {
    places_.push_back({point, {}});
    places_.back().sum.add(point);
    return grid_.add(point);
  }

  CenterGrid grid_;
  std::vector<Place> places_;
};

}  // namespace

std::array<double, 3> unitVector(const GeoPoint& point) {
  const double lat = point.latitude * std::numbers::pi / 180;
  const double lon = point.longitude * std::numbers::pi / 180;
  return {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
}

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
