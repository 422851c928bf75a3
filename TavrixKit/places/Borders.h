#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "foundation/GeoPoint.h"

namespace tavrix {

/// The areas of countries in the table: the sides of their rings, in bands of a quarter of a degree
/// of latitude. The bytes are read in place and are not trusted. They must outlive the borders.
class Borders {
 public:
  static constexpr std::size_t sideBytes = 18;

  /// Creates borders without any area.
  Borders() = default;
  /// `starts` holds the index of the first side of every band, in ascending order, and then the
  /// number of sides; 4 bytes each.
  Borders(std::span<const std::byte> starts, std::span<const std::byte> sides)
      : starts_(starts), sides_(sides) {}

  /// Returns the number of the country whose area contains a point, or nullopt if no area does, as
  /// on the open sea.
  std::optional<std::uint8_t> countryAt(const GeoPoint& point) const;
  /// Returns true if the edge of any area is within `km` of a point. `km` may be up to a few
  /// hundred kilometres.
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
