#include "grouping/TripGrouping.h"

#include <algorithm>

#include "grouping/CalendarGrouping.h"
#include "grouping/DayCount.h"
#include "grouping/DistanceLimit.h"
#include "grouping/GroupIDs.h"
#include "grouping/PlaceClustering.h"

namespace tavrix::TripGrouping {
namespace {

using namespace grouping_reason;

/// Walks the shots and keeps the stay that is going on.
class StayWalk {
 public:
  StayWalk(const std::vector<DatedShot>& shots, const GeoPoint& home,
           const GroupingSettings& settings)
      : shots_(shots),
        home_(home),
        homeVector_(PlaceClustering::unitVector(home)),
        settings_(settings),
        awayLimit_(settings.tripDistanceKm),
        cityLimit_(settings.tripCityKm) {}

  std::vector<Stay> run() {
    for (std::size_t i = 0; i < shots_.size(); ++i) {
      if (shots_[i].position) visit(i, *shots_[i].position);
    }
    close(LastShot{});
    return std::move(stays_);
  }

 private:
  void visit(std::size_t i, const GeoPoint& point) {
    const auto vector = PlaceClustering::unitVector(point);
    const auto homeKm = [&] { return haversineDistanceKm(home_, point); };
    const auto cityKm = [&] { return haversineDistanceKm(center(), point); };
    if (!awayLimit_.isExceeded(homeVector_, vector, homeKm)) {
      if (current_) close(NearHome{homeKm(), settings_.tripDistanceKm});
      return;
    }
    if (!current_) {
      open(i, AwayFromHome{homeKm(), settings_.tripDistanceKm});
    } else if (const auto gap = shots_[i].date - shots_[current_->end - 1].date;
               isLonger(gap, settings_.tripMaxGapHours)) {
      reopen(i, Pause{gap, settings_.tripMaxGapHours});
    } else if (cityLimit_.isExceeded(centerVector(), vector, cityKm)) {
      reopen(i, NewCity{cityKm(), settings_.tripCityKm});
    }
    sum_.addVector(vector);
    current_->end = i + 1;
  }

  const GeoPoint& firstPoint() const { return *shots_[current_->begin].position; }
  GeoPoint center() const { return sum_.center(firstPoint()); }
  PlaceClustering::UnitVector centerVector() const {
    const auto direction = sum_.direction();
    return direction ? *direction : PlaceClustering::unitVector(firstPoint());
  }

  /// The stay begins with a shot that has a position.
  void open(std::size_t i, StayBegin reason) {
    current_ = Stay{.begin = i,
                    .end = i,
                    .center = {},
                    .days = 0,
                    .beginReason = reason,
                    .endReason = LastShot{}};
    sum_ = {};
  }

  template <typename Reason>
  void reopen(std::size_t i, const Reason& reason) {
    close(reason);
    open(i, reason);
  }

  void close(const StayEnd& reason) {
    if (!current_) return;
    DayCount days;
    for (std::size_t i = current_->begin; i < current_->end; ++i) {
      days.add(settings_.timeZone.dateAt(shots_[i].date));
    }
    current_->days = days.count();
    current_->center = center();
    current_->endReason = reason;
    stays_.push_back(*current_);
    current_.reset();
  }

  const std::vector<DatedShot>& shots_;
  GeoPoint home_;
  PlaceClustering::UnitVector homeVector_;
  const GroupingSettings& settings_;
  PlaceClustering::DistanceLimit awayLimit_;
  PlaceClustering::DistanceLimit cityLimit_;
  std::vector<Stay> stays_;
  std::optional<Stay> current_;
  PlaceClustering::UnitVectorSum sum_;
};

MediaGroup tripGroup(const std::vector<DatedShot>& shots, const Stay& stay, const TimeZone& zone,
                     GroupIDs& ids) {
  MediaGroup group;
  group.id = ids.take("trip-" + dayText(zone.dateAt(shots[stay.begin].date)));
  group.bundles.reserve(stay.end - stay.begin);
  for (std::size_t i = stay.begin; i < stay.end; ++i) appendShot(group, shots[i]);
  return group;
}

TripReasons::Stay stayReason(const std::vector<DatedShot>& shots, const Stay& stay, int minDays) {
  return {.groupID = std::nullopt,
          .dateStart = shots[stay.begin].date,
          .dateEnd = shots[stay.end - 1].date,
          .center = stay.center,
          .shotCount = stay.end - stay.begin,
          .days = stay.days,
          .minDays = minDays,
          .begin = stay.beginReason,
          .end = stay.endReason};
}

/// Why the shots outside every trip, in capture order, are in none.
std::vector<MonthReason> monthReasons(const std::vector<DatedShot>& shots,
                                      const std::vector<Stay>& stays,
                                      const std::optional<GeoPoint>& home,
                                      const GroupingSettings& settings) {
  std::vector<MonthReason> reasons;
  std::size_t stay = 0;
  for (std::size_t i = 0; i < shots.size(); ++i) {
    while (stay < stays.size() && i >= stays[stay].end) ++stay;
    if (stay < stays.size() && i >= stays[stay].begin) {
      if (!stays[stay].isTrip(settings)) reasons.emplace_back(Outing{stay});
    } else if (!home) {
      reasons.emplace_back(NoHome{});
    } else if (!shots[i].position) {
      reasons.emplace_back(NoPosition{});
    } else {
      reasons.emplace_back(
          NearHome{haversineDistanceKm(*home, *shots[i].position), settings.tripDistanceKm});
    }
  }
  return reasons;
}

std::vector<TripReasons::Month> reasonsByMonth(const CalendarGrouping::Result& months,
                                               const std::vector<MonthReason>& reasons) {
  std::vector<TripReasons::Month> result;
  result.reserve(months.groups.size());
  for (const MediaGroup& group : months.groups) {
    result.push_back({group.id, {}});
    result.back().shots.reserve(group.bundles.size());
  }
  for (std::size_t i = 0; i < reasons.size(); ++i) {
    result[months.groupOfShot[i]].shots.push_back(reasons[i]);
  }
  return result;
}

/// The shots that are in no trip, in capture order.
std::vector<DatedShot> outsideTrips(const std::vector<DatedShot>& shots,
                                    const std::vector<Stay>& trips) {
  std::vector<DatedShot> rest;
  rest.reserve(shots.size());
  auto from = shots.begin();
  for (const Stay& trip : trips) {
    rest.insert(rest.end(), from, shots.begin() + static_cast<std::ptrdiff_t>(trip.begin));
    from = shots.begin() + static_cast<std::ptrdiff_t>(trip.end);
  }
  rest.insert(rest.end(), from, shots.end());
  return rest;
}

}  // namespace

std::vector<Stay> stays(const std::vector<DatedShot>& shots, const std::optional<GeoPoint>& home,
                        const GroupingSettings& settings) {
  if (!home) return {};
  return StayWalk{shots, *home, settings}.run();
}

Result group(const std::vector<DatedShot>& shots, const std::optional<GeoPoint>& home,
             const GroupingSettings& settings, bool wantsReasons) {
  const std::vector<Stay> found = stays(shots, home, settings);
  Result result;
  TripReasons reasons;
  std::vector<Stay> trips;
  GroupIDs ids;
  for (const Stay& stay : found) {
    reasons.stays.push_back(stayReason(shots, stay, settings.tripMinDays));
    if (!stay.isTrip(settings)) continue;
    trips.push_back(stay);
    result.groups.push_back(tripGroup(shots, stay, settings.timeZone, ids));
    reasons.stays.back().groupID = result.groups.back().id;
  }
  auto months = CalendarGrouping::groups(outsideTrips(shots, trips), DateGranularity::month,
                                         settings.timeZone, "month-");
  if (wantsReasons) {
    reasons.months = reasonsByMonth(months, monthReasons(shots, found, home, settings));
    result.reasons = std::move(reasons);
  }
  std::move(months.groups.begin(), months.groups.end(), std::back_inserter(result.groups));
  return result;
}

}  // namespace tavrix::TripGrouping
