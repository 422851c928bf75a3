#pragma once

#include <cmath>
#include <numbers>

#include "grouping/PlaceClustering.h"

namespace tavrix::PlaceClustering {

/// Tests whether two points are farther apart than a distance. The result is that of the haversine
/// distance, but mostly computed from the chord between the unit vectors, which is much cheaper.
class DistanceLimit {
 public:
  explicit DistanceLimit(double km)
      : km_(km),
        chord_(2 * std::sin(km / earthDiameterKm)),
        isByChord_(km >= 0 && km < std::numbers::pi * earthDiameterKm / 2) {}

  /// Returns true if the distance is strictly greater than the limit. `haversineKm` is called for
  /// the exact distance only if the chord is too close to the limit.
  template <typename HaversineKm>
  bool isExceeded(const UnitVector& a, const UnitVector& b, HaversineKm haversineKm) const {
    if (isByChord_) {
      const double chord = chordBetween(a, b);
      if (std::abs(chord - chord_) > margin) return chord > chord_;
    }
    return haversineKm() > km_;
  }

 private:
  /// Larger than the rounding error of either way of measuring.
  static constexpr double margin = 1e-12;

  static double chordBetween(const UnitVector& a, const UnitVector& b) {
    const double x = a[0] - b[0];
    const double y = a[1] - b[1];
    const double z = a[2] - b[2];
    return std::sqrt(x * x + y * y + z * z);
  }

  double km_;
  double chord_;
  bool isByChord_;
};

}  // namespace tavrix::PlaceClustering
