#pragma once

#include <cstddef>
#include <vector>

#include "grouping/DatedShots.h"
#include "grouping/GroupingReasons.h"
#include "grouping/GroupingSettings.h"
#include "grouping/MediaGroup.h"

namespace tavrix::EventGrouping {

/// The shots from index `begin` up to the `begin` of the next event, and the reason why they are
/// not in the previous event.
struct Event {
  std::size_t begin = 0;
  EventBegin reason;

  friend bool operator==(const Event&, const Event&) = default;
};

/// Splits shots, given in capture order, into events. A new event begins after a pause longer than
/// `eventGapHours` or, with `splitByDistance`, a distance greater than `eventGapKm` from one shot
/// to the next. A pause or distance equal to its setting does not split. If one of the two shots
/// has no position, the distance does not split.
std::vector<Event> events(const std::vector<DatedShot>& shots, const GroupingSettings& settings);

/// Returns one group for each event, in chronological order. Its id is "event-" and the day of its
/// first shot. "-2" is appended for the second event of a day, "-3" for the third.
std::vector<MediaGroup> groups(const std::vector<DatedShot>& shots,
                               const std::vector<Event>& events);

}  // namespace tavrix::EventGrouping
