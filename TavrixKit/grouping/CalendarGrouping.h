#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/TimeZone.h"
#include "grouping/DatedShots.h"
#include "grouping/GroupingMode.h"
#include "grouping/MediaGroup.h"

namespace tavrix {

/// Adds a shot, later than all that the group holds.
void appendShot(MediaGroup& group, const DatedShot& shot);

namespace CalendarGrouping {

struct Result {
  std::vector<MediaGroup> groups;  ///< in the order of their first shots
  std::vector<std::uint32_t> groupOfShot;
};

/// One group for each calendar day, month or year in the zone of shots in capture order. A group's
/// id is the prefix and "2026-05-10", "2026-05" or "2026".
Result groups(const std::vector<DatedShot>& shots, DateGranularity granularity,
              const TimeZone& zone, const std::string& idPrefix = "");

}  // namespace CalendarGrouping

}  // namespace tavrix
