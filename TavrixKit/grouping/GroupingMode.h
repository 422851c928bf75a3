#pragma once

#include <variant>

namespace tavrix {

enum class DateGranularity { day, month, year };

/// The ways in which shots are grouped into folders.
namespace grouping_mode {
/// One group per calendar day, month or year.
struct ByDate {
  DateGranularity granularity = DateGranularity::day;
  friend bool operator==(const ByDate&, const ByDate&) = default;
};
/// Groups split at a pause in time or a jump in distance.
struct Events {
  friend bool operator==(const Events&, const Events&) = default;
};
/// Stays away from home become trip groups; all other shots are grouped by month.
struct Trips {
  friend bool operator==(const Trips&, const Trips&) = default;
};
/// Everything in one group.
struct Flat {
  friend bool operator==(const Flat&, const Flat&) = default;
};
}  // namespace grouping_mode

using GroupingMode = std::variant<grouping_mode::ByDate, grouping_mode::Events,
                                  grouping_mode::Trips, grouping_mode::Flat>;

}  // namespace tavrix
