#pragma once

#include <cstddef>
#include <vector>

#include "grouping/DatedShots.h"
#include "grouping/GroupingReasons.h"
#include "grouping/GroupingSettings.h"
#include "grouping/MediaGroup.h"

namespace tavrix::EventGrouping {

/// The shots from index `begin` up to the next event's, with why they are not in the event before.
struct Event {
  std::size_t begin = 0;
  EventBegin reason;

  friend bool operator==(const Event&, const Event&) = default;
};

/// Cuts shots in capture order wherever the photographer paused longer than `eventGapHours` or,
/// with `splitByDistance`, moved farther than `eventGapKm`, from one shot to the next. A pause or
/// distance equal to its setting does not cut, and a shot without a position is no distance away.
std::vector<Event> events(const std::vector<DatedShot>& shots, const GroupingSettings& settings);

/// One group for each event, in chronological order. Its id is "event-" and the day of its first
/// shot in the settings' zone; the second event of a day has "-2" after it, the third "-3".
std::vector<MediaGroup> groups(const std::vector<DatedShot>& shots,
                               const std::vector<Event>& events, const TimeZone& zone);

}  // namespace tavrix::EventGrouping
