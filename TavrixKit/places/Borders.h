#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "foundation/GeoPoint.h"

namespace tavrix {

/// The areas of countries as a table has them: the sides of their rings, by bands of a quarter of a
/// degree of latitude. Read where they lie and not trusted. The bytes must outlive the borders.
class Borders {
 public:
  static constexpr std::size_t sideBytes = 18;

  /// No areas at all.
  Borders() = default;
  /// `starts` holds the index of the first side of every band and after the last one the number of
  /// sides, 4 bytes each, in order.
  Borders(std::span<const std::byte> starts, std::span<const std::byte> sides)
      : starts_(starts), sides_(sides) {}

  /// The number of the country whose area holds a point; nothing on the open sea.
  std::optional<std::uint8_t> countryAt(const GeoPoint& point) const;
  /// Whether the edge of any area comes so near to a point; up to a few hundred kilometres.
  bool areWithin(const GeoPoint& point, double km) const;

 private:
  struct Side {
    GeoPoint south;
    GeoPoint north;
    std::uint8_t country;
  };

  template <typename Visit>
  void visitBand(std::size_t band, Visit visit) const;

  std::span<const std::byte> starts_;
  std::span<const std::byte> sides_;
};

}  // namespace tavrix
