#include "naming/GroupPlaces.h"

#include <absl/container/flat_hash_map.h>

#include <algorithm>
#include <map>
#include <utility>

#include "foundation/GeoPoint.h"

namespace tavrix {
namespace {

/// Successive shots of a group at one position.
struct Burst {
  GeoPoint position;
  std::size_t count = 0;
};

/// The shots of a group in one cell of the lookup.
struct CellShots {
  std::string key;
  std::vector<Burst> bursts;
  std::size_t count = 0;
};

/// Returns the cells in the order of their first shots.
std::vector<CellShots> cellsOf(const MediaGroup& group, const PlaceLookup& lookup) {
  std::vector<CellShots> cells;
  absl::flat_hash_map<std::string, std::size_t> cellOfKey;
  std::optional<GeoPoint> last;
  std::size_t cell = 0;
  for (const AssetBundle& bundle : group.bundles) {
    const auto position = bundle.position();
    if (!position) continue;
    // The shots of a burst have one position.
    if (last != position) {
      std::string key = lookup.placeKey(*position);
      const auto [found, isNew] = cellOfKey.try_emplace(std::move(key), cells.size());
      cell = found->second;
      if (isNew) cells.push_back({found->first, {}, 0});
      cells[cell].bursts.push_back({*position, 0});
      last = position;
    }
    ++cells[cell].bursts.back().count;
    ++cells[cell].count;
  }
  return cells;
}

/// Adds up the cells of each place.
class Count {
 public:
  /// `center` is that of the group.
  explicit Count(const std::optional<GeoPoint>& center) : center_(center) {}

  /// Adds the shots of a cell, which is at `center`.
  void add(const CellShots& cell, const GeoPoint& center, const PlaceNames& names) {
    const std::string identity = names.identity();
    if (identity.empty()) return;
    const auto [found, isNew] = placeOfIdentity_.try_emplace(identity, places_.size());
    if (isNew) places_.push_back({names, cell.key, center, 0});
    GroupPlaces::Place& place = places_[found->second];
    place.shots += cell.count;
    if (center_ &&
        haversineDistanceKm(center, *center_) < haversineDistanceKm(place.center, *center_)) {
      place.key = cell.key;
      place.center = center;
    }
  }

  std::vector<GroupPlaces::Place> finish() && {
    std::ranges::stable_sort(places_, std::ranges::greater{}, &GroupPlaces::Place::shots);
    return std::move(places_);
  }

 private:
  std::optional<GeoPoint> center_;
  std::vector<GroupPlaces::Place> places_;
  absl::flat_hash_map<std::string, std::size_t> placeOfIdentity_;
};

/// Returns the quarter of the first place that has more than half of all located shots.
std::optional<PlaceDistrict> districtOf(const GroupPlaces& places,
                                        const std::vector<CellShots>& cells,
                                        const PlaceLookup& lookup, const std::string& localeID) {
  if (places.places.empty() || 2 * places.places.front().shots <= places.locatedShots) return {};
  const std::string identity = places.places.front().names.identity();
  std::map<std::uint32_t, std::pair<PlaceDistrict, std::size_t>> shotsOfDistrict;
  for (const CellShots& cell : cells) {
    const auto names = lookup.names(cell.key, localeID);
    if (!names || names->identity() != identity) continue;
    for (const Burst& burst : cell.bursts) {
      const auto district = lookup.district(burst.position, cell.key, localeID);
      if (!district) continue;
      auto& [found, shots] = shotsOfDistrict[district->number];
      found = *district;
      shots += burst.count;
    }
  }
  for (const auto& [number, counted] : shotsOfDistrict) {
    if (2 * counted.second > places.locatedShots) return counted.first;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> GroupPlaces::city(bool severalCities) const {
  if (places.empty()) return std::nullopt;
  const auto& first = places.front().names.cityOrRegion();
  if (!severalCities || places.size() < 2 || 2 * places.front().shots >= locatedShots) return first;
  const auto& second = places[1].names.cityOrRegion();
  if (!first || !second || *first == *second) return first;
  return *first + ", " + *second;
}

GroupPlaces placesOf(const MediaGroup& group, const PlaceLookup& lookup,
                     const std::string& localeID) {
  GroupPlaces result;
  Count count{group.place};
  const std::vector<CellShots> cells = cellsOf(group, lookup);
  for (const CellShots& cell : cells) {
    result.locatedShots += cell.count;
    if (const auto names = lookup.names(cell.key, localeID)) {
      count.add(cell, lookup.center(cell.key).value_or(cell.bursts.front().position), *names);
    } else {
      result.unresolved.push_back(cell.bursts.front().position);
    }
  }
  result.places = std::move(count).finish();
  result.district = districtOf(result, cells, lookup, localeID);
  return result;
}

}  // namespace tavrix
