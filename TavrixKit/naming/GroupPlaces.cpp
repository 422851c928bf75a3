#include "naming/GroupPlaces.h"

#include <absl/container/flat_hash_map.h>

#include <algorithm>

#include "foundation/GeoPoint.h"

namespace tavrix {
namespace {

/// The shots of a group in one cell of the lookup.
struct CellShots {
  std::string key;
  GeoPoint firstShot;
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
      if (isNew) cells.push_back({found->first, *position, 0});
      last = position;
    }
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
  for (const CellShots& cell : cellsOf(group, lookup)) {
    result.locatedShots += cell.count;
    if (const auto names = lookup.names(cell.key, localeID)) {
      count.add(cell, lookup.center(cell.key).value_or(cell.firstShot), *names);
    } else {
      result.unresolved.push_back(cell.firstShot);
    }
  }
  result.places = std::move(count).finish();
  return result;
}

}  // namespace tavrix
