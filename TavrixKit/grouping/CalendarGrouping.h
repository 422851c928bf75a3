#pragma once

#include <absl/container/flat_hash_map.h>

#include <cstdint>
#include <string>
#include <vector>

#include "grouping/DatedShots.h"
#include "grouping/GroupBuilder.h"
#include "grouping/GroupingMode.h"

namespace tavrix {

/// Groups shots, given in capture order, by calendar day, month or year. A group's
/// id is the prefix followed by "2026-05-10", "2026-05" or "2026".
class CalendarGrouping {
 public:
  explicit CalendarGrouping(DateGranularity granularity, std::string idPrefix = "")
      : granularity_(granularity), idPrefix_(std::move(idPrefix)) {}

  /// Adds a shot and returns the index of its group.
  std::size_t add(const DatedShot& shot);
  /// Returns the groups in the order of their first shots.
  std::vector<MediaGroup> finish() &&;

 private:
  DateGranularity granularity_;
  std::string idPrefix_;
  std::vector<GroupBuilder> builders_;
  /// A map, because a day can continue after the next one began: if clocks go back past midnight,
  /// or differ between cameras.
  absl::flat_hash_map<std::chrono::sys_days::rep, std::size_t> groupOfDay_;
};

}  // namespace tavrix
