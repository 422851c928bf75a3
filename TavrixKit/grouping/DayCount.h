#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "foundation/Time.h"

namespace tavrix {

/// Counts different days. Cheap if equal days mostly follow each other, as in capture order.
class DayCount {
 public:
  void add(CivilDate date) {
    const auto day = std::chrono::sys_days{date};
    if (days_.empty() || days_.back() != day) days_.push_back(day);
  }

  /// Returns the number of different days. A day can recur in capture order: if clocks go back past
  /// midnight, a part of it is repeated.
  std::int64_t count() const {
    auto days = days_;
    std::sort(days.begin(), days.end());
    return std::unique(days.begin(), days.end()) - days.begin();
  }

 private:
  std::vector<std::chrono::sys_days> days_;
};

}  // namespace tavrix
