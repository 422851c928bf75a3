#include "places/PlaceCells.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>

#include "grouping/PlaceClustering.h"

namespace tavrix {
namespace {

constexpr double kmPerDegree = std::numbers::pi * earthDiameterKm / 360;
// The largest that a coordinate in a key can be long: "-180.0000".
constexpr std::size_t longestNumber = 9;

std::optional<double> degreesOf(std::string_view text, double largest) {
  double value = 0;
  if (text.empty() || text.size() > longestNumber) return std::nullopt;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return std::abs(value) <= largest ? std::optional{value} : std::nullopt;
}

/// Four decimals, and no sign before nothing.
double rounded(double degrees) { return std::round(degrees * 10'000) / 10'000 + 0.0; }

}  // namespace

PlaceCells::PlaceCells(const std::vector<GeoPoint>& points, double radiusKm) : radiusKm_(radiusKm) {
  for (const GeoPoint& center : PlaceClustering::assign(points, radiusKm).centers) {
    cells_.push_back({center, keyAt(center)});
  }
  std::stable_sort(cells_.begin(), cells_.end(), [](const Cell& a, const Cell& b) {
    return a.center.latitude < b.center.latitude;
  });
}

std::string PlaceCells::keyOf(const GeoPoint& point) const {
  // A little more than the radius, for what rounding takes away.
  const double reach = radiusKm_ / kmPerDegree * 1.000001 + 1e-9;
  const auto first = std::lower_bound(
      cells_.begin(), cells_.end(), point.latitude - reach,
      [](const Cell& cell, double latitude) { return cell.center.latitude < latitude; });
  const Cell* nearest = nullptr;
  double least = radiusKm_;
  for (auto at = first; at != cells_.end() && at->center.latitude <= point.latitude + reach; ++at) {
    const double distance = haversineDistanceKm(at->center, point);
    if (distance > least || (distance == least && nearest != nullptr)) continue;
    nearest = &*at;
    least = distance;
  }
  return nearest != nullptr ? nearest->key : keyAt(point);
}

std::vector<std::string> PlaceCells::keys() const {
  std::vector<std::string> keys;
  keys.reserve(cells_.size());
  for (const Cell& cell : cells_) keys.push_back(cell.key);
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
