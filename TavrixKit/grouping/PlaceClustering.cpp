#include "grouping/PlaceClustering.h"

#include <cmath>
#include <numbers>

#include "grouping/GreedyClusters.h"

namespace tavrix::PlaceClustering {
namespace {

constexpr double cancelled = 1e-12;

}  // namespace

UnitVector unitVector(const GeoPoint& point) {
  const double lat = point.latitude * std::numbers::pi / 180;
  const double lon = point.longitude * std::numbers::pi / 180;
  return {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
}

void UnitVectorSum::addVector(const UnitVector& vector) {
  x += vector[0];
  y += vector[1];
  z += vector[2];
  ++count;
}

std::optional<UnitVector> UnitVectorSum::direction() const {
  const double equatorial = std::sqrt(x * x + y * y);
  if (count < 1 || (equatorial <= cancelled && std::abs(z) <= cancelled)) return std::nullopt;
  const double length = std::sqrt(x * x + y * y + z * z);
  return UnitVector{x / length, y / length, z / length};
}

GeoPoint UnitVectorSum::center(const GeoPoint& firstPoint) const {
  const double equatorial = std::sqrt(x * x + y * y);
  if (count < 1 || (equatorial <= cancelled && std::abs(z) <= cancelled)) return firstPoint;
  return {std::atan2(z, equatorial) * 180 / std::numbers::pi,
          std::atan2(y, x) * 180 / std::numbers::pi};
}

Assignment assign(const std::vector<GeoPoint>& points, double radiusKm) {
  GreedyClusters growing{radiusKm};
  Assignment assignment;
  assignment.clusterOfPoint.reserve(points.size());
  for (const GeoPoint& point : points) {
    assignment.clusterOfPoint.push_back(growing.add(point, unitVector(point)));
  }
  for (std::uint32_t i = 0; i < growing.size(); ++i) {
    assignment.centers.push_back(growing.center(i));
  }
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
