#include "grouping/GroupingEngine.h"

#include <absl/container/flat_hash_map.h>

#include <algorithm>
#include <cassert>
#include <string>

#include "grouping/PlaceClustering.h"

namespace tavrix {
namespace {

using namespace grouping_mode;

/// A shot with the date by which it is ordered.
struct DatedShot {
  Instant date;
  const AssetBundle* bundle;
};

struct Shots {
  std::vector<DatedShot> dated;  ///< in capture order, ties in catalogue order
  std::vector<const AssetBundle*> undated;
};

Shots splitByDate(const std::vector<AssetBundle>& bundles) {
  Shots shots;
  shots.dated.reserve(bundles.size());
  for (const AssetBundle& bundle : bundles) {
    if (const auto date = bundle.captureDate()) {
      shots.dated.push_back({*date, &bundle});
    } else {
      shots.undated.push_back(&bundle);
    }
  }
  const auto isEarlier = [](const DatedShot& a, const DatedShot& b) { return a.date < b.date; };
  if (!std::is_sorted(shots.dated.begin(), shots.dated.end(), isEarlier)) {
    std::stable_sort(shots.dated.begin(), shots.dated.end(), isEarlier);
  }
  return shots;
}

/// The centre of the shots' positions.
std::optional<GeoPoint> placeOf(const std::vector<AssetBundle>& bundles) {
  PlaceClustering::UnitVectorSum sum;
  std::optional<GeoPoint> first;
  for (const AssetBundle& bundle : bundles) {
    const auto point = bundle.position();
    if (!point) continue;
    if (!first) first = point;
    sum.add(*point);
  }
  return first ? std::optional{sum.center(*first)} : std::nullopt;
}

/// Adds a shot, later than all that the group holds.
void append(MediaGroup& group, const DatedShot& shot) {
  if (!group.dateStart) group.dateStart = shot.date;
  group.dateEnd = shot.date;
  group.bundles.push_back(*shot.bundle);
}

std::string dateKey(DateGranularity granularity, CivilDate date) {
  switch (granularity) {
    case DateGranularity::day:
      return dayText(date);
    case DateGranularity::month:
      return monthText(date);
    case DateGranularity::year:
      return yearText(date);
  }
  return {};
}

CivilDate firstDayOf(DateGranularity granularity, CivilDate date) {
  switch (granularity) {
    case DateGranularity::day:
      return date;
    case DateGranularity::month:
      return date.year() / date.month() / 1;
    case DateGranularity::year:
      return date.year() / 1 / 1;
  }
  return date;
}

std::vector<MediaGroup> groupByDate(const std::vector<DatedShot>& shots,
                                    DateGranularity granularity, const TimeZone& zone) {
  std::vector<MediaGroup> groups;
  // Where clocks go back past midnight, a day goes on after the next one has begun.
  absl::flat_hash_map<std::chrono::sys_days::rep, std::size_t> groupOfDay;
  for (const DatedShot& shot : shots) {
    const CivilDate day = firstDayOf(granularity, zone.dateAt(shot.date));
    const auto number = std::chrono::sys_days{day}.time_since_epoch().count();
    const auto [found, isNew] = groupOfDay.try_emplace(number, groups.size());
    if (isNew) groups.emplace_back().id = dateKey(granularity, day);
    append(groups[found->second], shot);
  }
  return groups;
}

std::vector<MediaGroup> flatGroup(const Shots& shots) {
  if (shots.dated.empty() && shots.undated.empty()) return {};
  MediaGroup group;
  group.id = "flat";
  group.bundles.reserve(shots.dated.size() + shots.undated.size());
  for (const DatedShot& shot : shots.dated) append(group, shot);
  for (const AssetBundle* const bundle : shots.undated) group.bundles.push_back(*bundle);
  return {std::move(group)};
}

std::vector<MediaGroup> groupsByDate(const Shots& shots, DateGranularity granularity,
                                     const TimeZone& zone) {
  std::vector<MediaGroup> groups = groupByDate(shots.dated, granularity, zone);
  if (!shots.undated.empty()) {
    MediaGroup& undated = groups.emplace_back();
    undated.id = "no-date";
    for (const AssetBundle* const bundle : shots.undated) undated.bundles.push_back(*bundle);
  }
  return groups;
}

}  // namespace

bool GroupingEngine::supports(const GroupingMode& mode) {
  return std::holds_alternative<ByDate>(mode) || std::holds_alternative<Flat>(mode);
}

GroupingEngine::Result GroupingEngine::group(const Request& request) {
  assert(supports(request.mode));
  const TimeZone& zone = request.settings.timeZone;
  Result result;
  result.filteredBundles =
      filtered(request.bundles, request.filter, {zone, request.placeLookup.get()});
  const Shots shots = splitByDate(result.filteredBundles);
  const auto* const byDate = std::get_if<ByDate>(&request.mode);
  result.groups =
      byDate == nullptr ? flatGroup(shots) : groupsByDate(shots, byDate->granularity, zone);
  for (MediaGroup& group : result.groups) {
    group.bundles.shrink_to_fit();
    group.place = placeOf(group.bundles);
  }
  return result;
}

}  // namespace tavrix
