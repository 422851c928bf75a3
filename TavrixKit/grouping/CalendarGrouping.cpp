#include "grouping/CalendarGrouping.h"

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

std::size_t CalendarGrouping::add(const DatedShot& shot) {
  const CivilDate day = firstDayOf(granularity_, shot.day);
  const auto number = std::chrono::sys_days{day}.time_since_epoch().count();
  const auto [found, isNew] = groupOfDay_.try_emplace(number, builders_.size());
  if (isNew) {
    builders_.emplace_back(idPrefix_ + dateKey(granularity_, day)).setCalendarUnit(granularity_);
  }
  builders_[found->second].add(shot);
  return found->second;
}

std::vector<MediaGroup> CalendarGrouping::finish() && {
  std::vector<MediaGroup> groups;
  groups.reserve(builders_.size());
  for (GroupBuilder& builder : builders_) groups.push_back(std::move(builder).finish());
  return groups;
}

}  // namespace tavrix
