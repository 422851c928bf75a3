#include "grouping/GroupingEngine.h"

#include <algorithm>
#include <tuple>

#include "grouping/CalendarGrouping.h"
#include "grouping/DatedShots.h"
#include "grouping/EventGrouping.h"
#include "grouping/GroupBuilder.h"
#include "grouping/TripGrouping.h"

namespace tavrix {
namespace {

using namespace grouping_mode;

MediaGroup undatedGroup(const std::vector<const AssetBundle*>& shots) {
  GroupBuilder builder{"no-date", shots.size()};
  for (const AssetBundle* const bundle : shots) builder.addUndated(*bundle);
  return std::move(builder).finish();
}

std::vector<MediaGroup> flatGroup(const ShotsByDate& shots) {
  if (shots.dated.empty() && shots.undated.empty()) return {};
  GroupBuilder builder{"flat", shots.dated.size() + shots.undated.size()};
  for (const DatedShot& shot : shots.dated) builder.add(shot);
  for (const AssetBundle* const bundle : shots.undated) builder.addUndated(*bundle);
  return {std::move(builder).finish()};
}

void sortByStart(std::vector<MediaGroup>& groups) {
  std::sort(groups.begin(), groups.end(), [](const MediaGroup& a, const MediaGroup& b) {
    return std::tie(a.dateStart, a.id) < std::tie(b.dateStart, b.id);
  });
}

EventReasons reasonsOf(const std::vector<EventGrouping::Event>& events,
                       const std::vector<MediaGroup>& groups) {
  EventReasons reasons;
  for (std::size_t i = 0; i < events.size(); ++i) {
    reasons.events.push_back({groups[i].id, events[i].reason});
  }
  return reasons;
}

/// Adds the groups and the other results of a mode to `result`.
class ModeGrouping {
 public:
  ModeGrouping(const GroupingEngine::Request& request, const ShotsByDate& shots,
               GroupingEngine::Result& result)
      : request_(request), settings_(request.settings), shots_(shots), result_(result) {}

  void operator()(const ByDate& mode) {
    CalendarGrouping calendar{mode.granularity};
    for (const DatedShot& shot : shots_.dated) calendar.add(shot);
    result_.groups = std::move(calendar).finish();
    finish();
    tell(CalendarReasons{mode.granularity});
  }

  void operator()(const Events&) {
    const auto events = EventGrouping::events(shots_.dated, settings_);
    result_.groups = EventGrouping::groups(shots_.dated, events);
    if (request_.wantsReasons) tell(reasonsOf(events, result_.groups));
    finish();
  }

  void operator()(const Trips&) {
    result_.homeCandidates = HomeDetection::candidates(shots_.dated, settings_);
    result_.homeIsAmbiguous =
        HomeDetection::isAmbiguous(result_.homeCandidates, settings_.tripDistanceKm);
    const Homes homes = findHomes();
    const auto stays = TripGrouping::stays(shots_.dated, homes, settings_);
    const auto ids = TripGrouping::idsOf(shots_.dated, stays, settings_);
    auto trips = TripGrouping::group(shots_.dated, homes, settings_, stays, ids, request_.merges,
                                     request_.wantsReasons);
    result_.suggestions = MergeSuggestions::of(stays, ids, settings_);
    result_.groups = std::move(trips.groups);
    if (trips.reasons) tell(*std::move(trips.reasons));
    finish();
  }

  void operator()(const Flat&) {
    result_.groups = flatGroup(shots_);
    tell(FlatReasons{});
  }

 private:
  /// Returns the homes from which trips are measured. Notes their periods, if there are several.
  Homes findHomes() {
    const auto& chosen = settings_.homeOverride ? settings_.homeOverride : request_.homeOverride;
    if (settings_.homePeriods && !chosen) {
      auto periods = HomePeriods::of(shots_.dated, settings_);
      if (periods.size() > 1) {
        result_.homePeriods = std::move(periods);
        result_.homeIsAmbiguous = !result_.homePeriods.back().rivals.empty();
        return Homes{result_.homePeriods};
      }
    }
    return Homes{HomeDetection::home(chosen, result_.homeCandidates)};
  }

  /// Sorts the dated groups and appends the group of the undated shots.
  void finish() {
    sortByStart(result_.groups);
    if (!shots_.undated.empty()) result_.groups.push_back(undatedGroup(shots_.undated));
  }

  void tell(GroupingReasons reasons) {
    if (request_.wantsReasons) result_.reasons = std::move(reasons);
  }

  const GroupingEngine::Request& request_;
  const GroupingSettings& settings_;
  const ShotsByDate& shots_;
  GroupingEngine::Result& result_;
};

}  // namespace

GroupingEngine::Result GroupingEngine::group(const Request& request) {
  Result result;
  result.filteredBundles = filtered(request.bundles, request.filter,
                                    {request.settings.clock(), request.placeLookup.get()});
  const ShotsByDate shots = shotsByDate(result.filteredBundles, request.settings.clock());
  std::visit(ModeGrouping{request, shots, result}, request.mode);
  for (MediaGroup& group : result.groups) setCameraDays(group, request.settings.clock());
  return result;
}

}  // namespace tavrix
