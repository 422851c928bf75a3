#pragma once

#include <absl/container/flat_hash_map.h>

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/TimeZone.h"
#include "grouping/DatedShots.h"
#include "grouping/GroupBuilder.h"
#include "grouping/GroupingMode.h"

namespace tavrix {

/// Gathers shots, given in capture order, into one group for each calendar day, month or year of a
/// zone. A group's id is the prefix and "2026-05-10", "2026-05" or "2026".
class CalendarGrouping {
 public:
  CalendarGrouping(DateGranularity granularity, TimeZone zone, std::string idPrefix = "")
      : granularity_(granularity), zone_(std::move(zone)), idPrefix_(std::move(idPrefix)) {}

  /// Returns the index of the shot's group.
  std::size_t add(const DatedShot& shot);
  /// The groups in the order of their first shots.
  std::vector<MediaGroup> finish() &&;

 private:
  DateGranularity granularity_;
  TimeZone zone_;
  std::string idPrefix_;
  std::vector<GroupBuilder> builders_;
  /// Where clocks go back past midnight, a day goes on after the next one has begun.
  absl::flat_hash_map<std::chrono::sys_days::rep, std::size_t> groupOfDay_;
};

}  // namespace tavrix
