#include "grouping/CalendarGrouping.h"

#include <absl/container/flat_hash_map.h>

namespace tavrix {
namespace {

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

}  // namespace

void appendShot(MediaGroup& group, const DatedShot& shot) {
  if (!group.dateStart) group.dateStart = shot.date;
  group.dateEnd = shot.date;
  group.bundles.push_back(*shot.bundle);
}

CalendarGrouping::Result CalendarGrouping::groups(const std::vector<DatedShot>& shots,
                                                  DateGranularity granularity, const TimeZone& zone,
                                                  const std::string& idPrefix) {
  Result result;
  result.groupOfShot.reserve(shots.size());
  // Where clocks go back past midnight, a day goes on after the next one has begun.
  absl::flat_hash_map<std::chrono::sys_days::rep, std::uint32_t> groupOfDay;
  for (const DatedShot& shot : shots) {
    const CivilDate day = firstDayOf(granularity, zone.dateAt(shot.date));
    const auto number = std::chrono::sys_days{day}.time_since_epoch().count();
    const auto [found, isNew] =
        groupOfDay.try_emplace(number, static_cast<std::uint32_t>(result.groups.size()));
    if (isNew) result.groups.emplace_back().id = idPrefix + dateKey(granularity, day);
    appendShot(result.groups[found->second], shot);
    result.groupOfShot.push_back(found->second);
  }
  return result;
}

}  // namespace tavrix
