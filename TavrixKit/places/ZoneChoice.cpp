#include "places/ZoneChoice.h"

#include <optional>

#include "places/CityChoice.h"

namespace tavrix::ZoneChoice {
namespace {

/// The radii of the search, in kilometres. In most places the first one is enough.
constexpr double reaches[] = {25, 100, 400};

/// The nearest place with a zone, and the nearest one of the region.
struct Nearest {
  struct Place {
    double distance;
    std::size_t index;
  };
  std::optional<Place> any;
  std::optional<Place> ofRegion;
};

void takeNearer(std::optional<Nearest::Place>& nearest, const Nearest::Place& place) {
  if (!nearest || place.distance < nearest->distance) nearest = place;
}

Nearest nearestWithin(const GazetteerTable& table, const GeoPoint& point, double radiusKm,
                      std::uint16_t region) {
  const auto country = table.borders().countryAt(point);
  Nearest nearest;
  for (const auto part : {GazetteerTable::Part::large, GazetteerTable::Part::small}) {
    table.visitAround(point, radiusKm, part, [&](std::size_t index) {
      const double distance = haversineDistanceKm(point, table.pointAt(index));
      const bool isUsable = distance <= radiusKm && CityChoice::isSameSide(table, index, country) &&
                            !table.zoneIDAt(index).empty();
      if (!isUsable) return;
      takeNearer(nearest.any, {distance, index});
      if (table.regionNumberAt(index) == region) takeNearer(nearest.ofRegion, {distance, index});
    });
  }
  return nearest;
}

}  // namespace

std::string_view zoneIDAt(const GazetteerTable& table, const GeoPoint& point) {
  const std::uint16_t region = table.regionGrid().at(point);
  std::optional<Nearest::Place> any;
  for (const double reach : reaches) {
    const Nearest nearest = nearestWithin(table, point, reach, region);
    const auto& found = region == 0 ? nearest.any : nearest.ofRegion;
    if (found) return table.zoneIDAt(found->index);
    any = nearest.any;
  }
  return any ? table.zoneIDAt(any->index) : std::string_view{};
}

}  // namespace tavrix::ZoneChoice
