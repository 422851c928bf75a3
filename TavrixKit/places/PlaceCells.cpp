#include "places/PlaceCells.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>

#include "grouping/PlaceClustering.h"

namespace tavrix {
namespace {

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
    : radiusKm_(radiusKm), grid_(radiusKm) {
  for (const GeoPoint& center : PlaceClustering::assign(points, radiusKm).centers) {
    const auto cell = grid_.cellOf(PlaceClustering::unitVector(center));
    grid_.move(static_cast<std::uint32_t>(cells_.size()), std::nullopt, cell);
    cells_.push_back({center, keyAt(center)});
  }
}

/// Visits the cells within the radius of a point, and some a little farther off.
template <typename Visit>
void PlaceCells::visitNear(const GeoPoint& point, Visit visit) const {
  if (!grid_.isUsable()) {
    for (std::uint32_t i = 0; i < cells_.size(); ++i) visit(i);
  } else if (const auto cell = grid_.cellOf(PlaceClustering::unitVector(point))) {
    grid_.visitAround(*cell, visit);
  }
}

std::string PlaceCells::keyOf(const GeoPoint& point) const {
  std::optional<std::uint32_t> nearest;
  double least = radiusKm_;
  visitNear(point, [&](std::uint32_t number) {
    const double distance = haversineDistanceKm(cells_[number].center, point);
    const bool isBefore = distance < least || !nearest || number < *nearest;
    if (!(distance <= least) || !isBefore) return;
    nearest = number;
    least = distance;
  });
  return nearest ? cells_[*nearest].key : keyAt(point);
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
