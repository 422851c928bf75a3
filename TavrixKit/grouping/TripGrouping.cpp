#include "grouping/TripGrouping.h"

#include <absl/container/flat_hash_map.h>

#include <algorithm>
#include <set>

#include "grouping/CalendarGrouping.h"
#include "grouping/DayCount.h"
#include "grouping/DistanceLimit.h"
#include "grouping/GroupBuilder.h"
#include "grouping/GroupIDs.h"
#include "grouping/PlaceClustering.h"

namespace tavrix::TripGrouping {
namespace {

using namespace grouping_reason;

/// Walks through the shots and keeps the current stay.
class StayWalk {
 public:
  StayWalk(const std::vector<DatedShot>& shots, const Homes& homes,
           const GroupingSettings& settings)
      : shots_(shots),
        homes_(homes),
        settings_(settings),
        awayLimit_(settings.tripDistanceKm),
        cityLimit_(settings.tripCityKm) {}

  std::vector<Stay> run() {
    for (std::size_t i = 0; i < shots_.size(); ++i) {
      if (!shots_[i].position) continue;
      setHome(*homes_.at(i));
      visit(i, *shots_[i].position);
    }
    close(LastShot{});
    return std::move(stays_);
  }

 private:
  void setHome(const GeoPoint& home) {
    if (home_ == home) return;
    home_ = home;
    homeVector_ = PlaceClustering::unitVector(home);
  }

  void visit(std::size_t i, const GeoPoint& point) {
    const PlaceClustering::UnitVector& vector = shots_[i].vector;
    const auto homeKm = [&] { return haversineDistanceKm(*home_, point); };
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
    return direction.value_or(shots_[current_->begin].vector);
  }

  /// Begins a stay at shot `i`, which must have a position.
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
      days.add(shots_[i].day);
    }
    current_->days = days.count();
    current_->center = center();
    current_->endReason = reason;
    stays_.push_back(*current_);
    current_.reset();
  }

  const std::vector<DatedShot>& shots_;
  const Homes& homes_;
  std::optional<GeoPoint> home_;  ///< of the present shot
  PlaceClustering::UnitVector homeVector_{};
  const GroupingSettings& settings_;
  PlaceClustering::DistanceLimit awayLimit_;
  PlaceClustering::DistanceLimit cityLimit_;
  std::vector<Stay> stays_;
  std::optional<Stay> current_;
  PlaceClustering::UnitVectorSum sum_;
};

MediaGroup stayGroup(const std::vector<DatedShot>& shots, const Stay& stay, const std::string& id) {
  GroupBuilder builder{id, stay.end - stay.begin};
  for (std::size_t i = stay.begin; i < stay.end; ++i) builder.add(shots[i]);
  return std::move(builder).finish();
}

/// Returns one value for each stay, true if the stay is a group: a trip, or an outing that is
/// merged with another stay.
std::vector<bool> groupsAmong(const std::vector<Stay>& stays, const std::vector<std::string>& ids,
                              const GroupMerges& merges, const GroupingSettings& settings) {
  std::vector<bool> isGroup;
  isGroup.reserve(stays.size());
  absl::flat_hash_map<std::string_view, std::size_t> stayOfID;
  for (std::size_t i = 0; i < stays.size(); ++i) {
    isGroup.push_back(stays[i].isTrip(settings));
    stayOfID.emplace(ids[i], i);
  }
  std::set<std::string_view> claimed;
  for (const auto& merge : merges) {
    std::vector<std::size_t> members;
    for (const std::string& id : merge) {
      const auto found = stayOfID.find(id);
      if (found != stayOfID.end() && claimed.insert(found->first).second) {
        members.push_back(found->second);
      }
    }
    if (members.size() < 2) continue;
    for (const std::size_t member : members) isGroup[member] = true;
  }
  return isGroup;
}

DaySpan spanOf(const std::vector<DatedShot>& shots, const Stay& stay) {
  std::optional<DaySpan> span;
  for (std::size_t i = stay.begin; i < stay.end; ++i) extend(span, {shots[i].day, shots[i].day});
  return *span;
}

TripReasons::Stay stayReason(const std::vector<DatedShot>& shots, const Stay& stay,
                             const GeoPoint& home, int minDays) {
  return {.groupID = std::nullopt,
          .dateStart = shots[stay.begin].date,
          .dateEnd = shots[stay.end - 1].date,
          .span = spanOf(shots, stay),
          .center = stay.center,
          .homeKm = haversineDistanceKm(home, stay.center),
          .shotCount = stay.end - stay.begin,
          .days = stay.days,
          .minDays = minDays,
          .begin = stay.beginReason,
          .end = stay.endReason};
}

/// Calls `visit` with the index of every shot that is in no stay with a group, and the index of its
/// outing if it has one.
template <typename Visit>
void visitOutsideGroups(const std::vector<DatedShot>& shots, const std::vector<Stay>& stays,
                        const std::vector<bool>& isGroup, Visit visit) {
  std::size_t stay = 0;
  for (std::size_t i = 0; i < shots.size(); ++i) {
    while (stay < stays.size() && i >= stays[stay].end) ++stay;
    const bool isInStay = stay < stays.size() && i >= stays[stay].begin;
    if (!isInStay) {
      visit(i, std::optional<std::size_t>{});
    } else if (!isGroup[stay]) {
      visit(i, std::optional{stay});
    }
  }
}

/// Returns the reason why a shot is not in a trip.
MonthReason monthReason(const DatedShot& shot, const std::optional<std::size_t>& outing,
                        const std::optional<GeoPoint>& home, const GroupingSettings& settings) {
  if (outing) return Outing{*outing};
  if (!home) return NoHome{};
  if (!shot.position) return NoPosition{};
  return NearHome{haversineDistanceKm(*home, *shot.position), settings.tripDistanceKm};
}

}  // namespace

std::vector<Stay> stays(const std::vector<DatedShot>& shots, const Homes& homes,
                        const GroupingSettings& settings) {
  if (homes.areUnknown()) return {};
  return StayWalk{shots, homes, settings}.run();
}

std::vector<std::string> idsOf(const std::vector<DatedShot>& shots, const std::vector<Stay>& stays,
                               const GroupingSettings& settings) {
  GroupIDs unique;
  std::vector<std::string> ids;
  ids.reserve(stays.size());
  for (const Stay& stay : stays) {
    const std::string day = dayText(shots[stay.begin].day);
    ids.push_back(unique.take((stay.isTrip(settings) ? "trip-" : "outing-") + day));
  }
  return ids;
}

Result group(const std::vector<DatedShot>& shots, const Homes& homes,
             const GroupingSettings& settings, const std::vector<Stay>& stays,
             const std::vector<std::string>& ids, const GroupMerges& merges, bool wantsReasons) {
  const std::vector<bool> isGroup = groupsAmong(stays, ids, merges, settings);
  Result result;
  TripReasons reasons;
  for (std::size_t i = 0; i < stays.size(); ++i) {
    reasons.stays.push_back(
        stayReason(shots, stays[i], *homes.at(stays[i].begin), settings.tripMinDays));
    if (!isGroup[i]) continue;
    result.groups.push_back(stayGroup(shots, stays[i], ids[i]));
    reasons.stays.back().groupID = ids[i];
  }
  CalendarGrouping calendar{DateGranularity::month, "month-"};
  visitOutsideGroups(shots, stays, isGroup, [&](std::size_t i, const auto& outing) {
    const std::size_t month = calendar.add(shots[i]);
    if (!wantsReasons) return;
    reasons.months.resize(std::max(reasons.months.size(), month + 1));
    reasons.months[month].shots.push_back(monthReason(shots[i], outing, homes.at(i), settings));
  });
  std::vector<MediaGroup> months = std::move(calendar).finish();
  if (wantsReasons) {
    for (std::size_t i = 0; i < months.size(); ++i) reasons.months[i].groupID = months[i].id;
    result.reasons = std::move(reasons);
  }
  std::move(months.begin(), months.end(), std::back_inserter(result.groups));
  return result;
}

}  // namespace tavrix::TripGrouping
