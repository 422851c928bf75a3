#include "grouping/EventGrouping.h"

#include "grouping/GroupBuilder.h"
#include "grouping/GroupIDs.h"

namespace tavrix::EventGrouping {
namespace {

using namespace grouping_reason;

/// Returns the reason why a shot begins a new event after `before`, or nullopt if it does not.
std::optional<EventBegin> cut(const DatedShot& before, const DatedShot& shot,
                              const GroupingSettings& settings) {
  const Instant::duration gap = shot.date - before.date;
  if (isLonger(gap, settings.eventGapHours)) return Pause{gap, settings.eventGapHours};
  if (!settings.splitByDistance || !before.position || !shot.position) return std::nullopt;
  const double km = haversineDistanceKm(*before.position, *shot.position);
  if (km > settings.eventGapKm) return Jump{km, settings.eventGapKm};
  return std::nullopt;
}

}  // namespace

std::vector<Event> events(const std::vector<DatedShot>& shots, const GroupingSettings& settings) {
  std::vector<Event> result;
  for (std::size_t i = 0; i < shots.size(); ++i) {
    if (i == 0) {
      result.push_back({0, FirstShot{}});
    } else if (auto reason = cut(shots[i - 1], shots[i], settings)) {
      result.push_back({i, *reason});
    }
  }
  return result;
}

std::vector<MediaGroup> groups(const std::vector<DatedShot>& shots,
                               const std::vector<Event>& events) {
  std::vector<MediaGroup> result;
  result.reserve(events.size());
  GroupIDs ids;
  for (std::size_t i = 0; i < events.size(); ++i) {
    const std::size_t end = i + 1 < events.size() ? events[i + 1].begin : shots.size();
    const std::string day = dayText(shots[events[i].begin].day);
    GroupBuilder builder{ids.take("event-" + day), end - events[i].begin};
    for (std::size_t at = events[i].begin; at < end; ++at) builder.add(shots[at]);
    result.push_back(std::move(builder).finish());
  }
  return result;
}

}  // namespace tavrix::EventGrouping
