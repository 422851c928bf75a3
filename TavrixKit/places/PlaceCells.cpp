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

PlaceCells::PlaceCells(const std::vector<GeoPoint>& points, double radiusKm)
    : radiusKm_(radiusKm), centers_(PlaceClustering::assign(points, radiusKm).centers) {
  std::stable_sort(centers_.begin(), centers_.end(),
                   [](const GeoPoint& a, const GeoPoint& b) { return a.latitude < b.latitude; });
}

std::string PlaceCells::keyOf(const GeoPoint& point) const {
  // A little more than the radius, for what rounding takes away.
  const double reach = radiusKm_ / kmPerDegree * 1.000001 + 1e-9;
  const auto first = std::lower_bound(
      centers_.begin(), centers_.end(), point.latitude - reach,
      [](const GeoPoint& center, double latitude) { return center.latitude < latitude; });
  const GeoPoint* nearest = nullptr;
  double least = radiusKm_;
  for (auto at = first; at != centers_.end() && at->latitude <= point.latitude + reach; ++at) {
    const double distance = haversineDistanceKm(*at, point);
    if (distance > least || (distance == least && nearest != nullptr)) continue;
    nearest = &*at;
    least = distance;
  }
  return keyAt(nearest != nullptr ? *nearest : point);
}

std::vector<std::string> PlaceCells::keys() const {
  std::vector<std::string> keys;
  keys.reserve(centers_.size());
  for (const GeoPoint& center : centers_) keys.push_back(keyAt(center));
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
