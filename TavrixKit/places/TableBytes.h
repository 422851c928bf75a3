#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <type_traits>

#include "foundation/GeoPoint.h"

/// The encoding of numbers in the table of places, described in docs/gazetteer.md.
namespace tavrix::TableBytes {

inline constexpr double unitsPerDegree = 100'000;
inline constexpr double bandsPerDegree = 4;
inline constexpr std::size_t bandCount = 720;
inline constexpr double kmPerDegree = std::numbers::pi * earthDiameterKm / 360;

template <typename Number>
Number littleEndian(const std::byte* at) {
  std::make_unsigned_t<Number> value = 0;
  for (std::size_t i = sizeof value; i-- > 0;) {
    value = static_cast<decltype(value)>((std::uint64_t{value} << 8U) |
                                         std::to_integer<std::uint64_t>(at[i]));
  }
  return static_cast<Number>(value);
}

inline double degreesAt(const std::byte* at) {
  return littleEndian<std::int32_t>(at) / unitsPerDegree;
}

/// Returns the band of a latitude in degrees; the first or last band for a latitude beyond a pole.
inline std::size_t bandOf(double latitude) {
  const double band = std::floor((latitude + 90) * bandsPerDegree);
  return static_cast<std::size_t>(std::clamp(band, 0.0, static_cast<double>(bandCount - 1)));
}

}  // namespace tavrix::TableBytes
