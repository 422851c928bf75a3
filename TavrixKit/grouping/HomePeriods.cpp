#include "grouping/HomePeriods.h"

#include <absl/container/flat_hash_map.h>
#include <absl/container/flat_hash_set.h>

#include <algorithm>
#include <span>
#include <tuple>

#include "grouping/GreedyClusters.h"

namespace tavrix {
namespace HomePeriods {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using Place = std::uint32_t;

/// A day with a shot at a place.
struct PlaceDay {
  sys_days day;
  Place place;

  friend bool operator==(const PlaceDay&, const PlaceDay&) = default;
  template <typename Hash>
  friend Hash AbslHashValue(Hash hash, const PlaceDay& each) {
    return Hash::combine(std::move(hash), each.day.time_since_epoch().count(), each.place);
  }
};

/// Places with the days on which shots were taken there.
struct Places {
  std::vector<PlaceDay> days;          ///< by day, each pair once
  std::vector<std::int64_t> dayCount;  ///< by place
  std::vector<GeoPoint> centers;       ///< by place

  bool areOneHome(Place a, Place b) const {
    return a == b || haversineDistanceKm(centers[a], centers[b]) < leastMoveKm;
  }
};

Places placesOf(const std::vector<DatedShot>& shots, double radiusKm) {
  Places places;
  PlaceClustering::GreedyClusters clusters{radiusKm};
  absl::flat_hash_set<PlaceDay> known;
  for (const DatedShot& shot : shots) {
    if (!shot.position) continue;
    const PlaceDay there{sys_days{shot.day}, clusters.add(*shot.position, shot.vector)};
    if (known.insert(there).second) places.days.push_back(there);
  }
  std::stable_sort(places.days.begin(), places.days.end(),
                   [](const PlaceDay& a, const PlaceDay& b) { return a.day < b.day; });
  places.dayCount.resize(clusters.size());
  for (const PlaceDay& each : places.days) ++places.dayCount[each.place];
  for (Place place = 0; place < clusters.size(); ++place) {
    places.centers.push_back(clusters.center(place));
  }
  return places;
}

/// Consecutive days with one leading place.
struct Stretch {
  Place home;
  std::size_t begin;  ///< index of the first of its days in Places::days
  std::size_t end;    ///< after the last one
  std::optional<sys_days> firstAtHome{};
  sys_days lastAtHome{};

  /// The days from the first to the last one at the home, inclusive.
  days span() const { return firstAtHome ? lastAtHome - *firstAtHome + days{1} : days{0}; }

  /// Takes the days from `from` to `to`, exclusive, which are beside its own.
  void take(const Places& places, std::size_t from, std::size_t to) {
    begin = std::min(begin, from);
    end = std::max(end, to);
    for (std::size_t i = from; i < to; ++i) {
      const sys_days day = places.days[i].day;
      if (!places.areOneHome(home, places.days[i].place)) continue;
      firstAtHome = firstAtHome ? std::min(*firstAtHome, day) : day;
      lastAtHome = std::max(lastAtHome, day);
    }
  }
};

/// Counts the days at each place in a window that moves on through time.
class Window {
 public:
  explicit Window(const Places& places) : places_(places) {}

  Place leaderAround(sys_days day) {
    const std::vector<PlaceDay>& all = places_.days;
    for (; end_ < all.size() && all[end_].day <= day + shortest / 2; ++end_) {
      ++counts_[all[end_].place];
    }
    for (; all[begin_].day < day - shortest / 2; ++begin_) {
      const auto found = counts_.find(all[begin_].place);
      if (--found->second == 0) counts_.erase(found);
    }
    const auto rank = [&](const auto& entry) {
      return std::tuple{entry.second, places_.dayCount[entry.first],
                        -static_cast<std::int64_t>(entry.first)};
    };
    return std::max_element(counts_.begin(), counts_.end(),
                            [&](const auto& a, const auto& b) { return rank(a) < rank(b); })
        ->first;
  }

 private:
  const Places& places_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  absl::flat_hash_map<Place, std::int64_t> counts_;
};

std::vector<Stretch> stretchesOf(const Places& places) {
  std::vector<Stretch> stretches;
  Window window{places};
  for (std::size_t i = 0; i < places.days.size(); ++i) {
    if (i == 0 || places.days[i].day != places.days[i - 1].day) {
      const Place leader = window.leaderAround(places.days[i].day);
      if (stretches.empty() || !places.areOneHome(stretches.back().home, leader)) {
        stretches.push_back({leader, i, i});
      }
    }
    stretches.back().take(places, i, i + 1);
  }
  return stretches;
}

/// Gives the days of short stretches to their neighbours, those of the shortest one first.
/// Neighbours with one home become one.
void absorbShort(const Places& places, std::vector<Stretch>& stretches) {
  while (stretches.size() > 1) {
    const auto least =
        std::min_element(stretches.begin(), stretches.end(),
                         [](const Stretch& a, const Stretch& b) { return a.span() < b.span(); });
    if (least->span() >= shortest) return;
    const bool isFirst = least == stretches.begin();
    const auto taker = isFirst ? std::next(least) : std::prev(least);
    taker->take(places, least->begin, least->end);
    const auto next = stretches.erase(least);
    if (isFirst || next == stretches.end()) continue;
    const auto previous = std::prev(next);
    if (!places.areOneHome(previous->home, next->home)) continue;
    previous->take(places, next->begin, next->end);
    stretches.erase(next);
  }
}

/// Returns the day from which the second of two stretches is best begun: the one with the fewest
/// days at the second home before it and at the first home from it on; the last of several.
sys_days moveBetween(const Places& places, const Stretch& before, const Stretch& after) {
  std::int64_t wrong = 0;
  for (std::size_t i = before.begin; i < after.end; ++i) {
    wrong += places.areOneHome(before.home, places.days[i].place) ? 1 : 0;
  }
  std::int64_t fewest = wrong;
  sys_days best = places.days[before.begin].day;
  for (std::size_t i = before.begin; i < after.end; ++i) {
    if (wrong <= fewest && (i == 0 || places.days[i].day != places.days[i - 1].day)) {
      fewest = wrong;
      best = places.days[i].day;
    }
    const Place place = places.days[i].place;
    if (places.areOneHome(before.home, place)) --wrong;
    if (places.areOneHome(after.home, place)) ++wrong;
  }
  return best;
}

/// Returns the periods that begin at these shots.
std::vector<HomePeriod> periodsFrom(const std::vector<DatedShot>& shots,
                                    const std::vector<std::size_t>& begins,
                                    const GroupingSettings& settings) {
  std::vector<HomePeriod> periods;
  for (std::size_t i = 0; i < begins.size(); ++i) {
    const std::size_t end = i + 1 < begins.size() ? begins[i + 1] : shots.size();
    const auto part = std::span{shots}.subspan(begins[i], end - begins[i]);
    const auto candidates = HomeDetection::candidates(part, settings);
    if (candidates.empty()) continue;
    std::optional<DaySpan> span;
    for (const DatedShot& shot : part) {
      if (shot.position) extend(span, {shot.day, shot.day});
    }
    periods.push_back({.begin = begins[i],
                       .home = candidates.front(),
                       .firstDay = span->first,
                       .lastDay = span->last,
                       .rivals = HomeDetection::rivals(candidates, settings.tripDistanceKm)});
  }
  return periods;
}

}  // namespace

std::vector<HomePeriod> of(const std::vector<DatedShot>& shots, const GroupingSettings& settings) {
  const Places places = placesOf(shots, settings.homeRadiusKm);
  std::vector<Stretch> stretches = stretchesOf(places);
  absorbShort(places, stretches);
  std::vector<std::size_t> begins{0};
  for (std::size_t i = 1; i < stretches.size(); ++i) {
    const sys_days move = moveBetween(places, stretches[i - 1], stretches[i]);
    const auto first = std::find_if(
        shots.begin() + static_cast<std::ptrdiff_t>(begins.back()), shots.end(),
        [&](const DatedShot& shot) { return shot.position && sys_days{shot.day} >= move; });
    begins.push_back(static_cast<std::size_t>(first - shots.begin()));
  }
  std::vector<HomePeriod> periods = periodsFrom(shots, begins, settings);
  // In all its shots a period may have the home of the one before, and then it is not another one.
  const auto isSame = [](const HomePeriod& a, const HomePeriod& b) {
    return haversineDistanceKm(a.home.center, b.home.center) < leastMoveKm;
  };
  while (std::adjacent_find(periods.begin(), periods.end(), isSame) != periods.end()) {
    begins = {0};
    for (std::size_t i = 1; i < periods.size(); ++i) {
      if (!isSame(periods[i - 1], periods[i])) begins.push_back(periods[i].begin);
    }
    periods = periodsFrom(shots, begins, settings);
  }
  return periods;
}

}  // namespace HomePeriods

Homes::Homes(const std::optional<GeoPoint>& home) {
  if (home) homes_.push_back({0, *home});
}

Homes::Homes(const std::vector<HomePeriod>& periods) {
  for (const HomePeriod& period : periods) homes_.push_back({period.begin, period.home.center});
}

std::optional<GeoPoint> Homes::at(std::size_t shot) const {
  const auto next =
      std::upper_bound(homes_.begin(), homes_.end(), shot,
                       [](std::size_t index, const Home& home) { return index < home.begin; });
  // Shots before the first one with a position belong to the first period.
  if (next == homes_.begin()) {
    return homes_.empty() ? std::nullopt : std::optional{homes_.front().point};
  }
  return std::prev(next)->point;
}

}  // namespace tavrix
