#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "Benches.h"
#include "Measure.h"
#include "SyntheticLibrary.h"
#include "grouping/GroupFaces.h"
#include "grouping/GroupingEngine.h"
#include "media/BundleBuilder.h"

namespace tavrix::bench {
namespace {

constexpr std::size_t million = 1'000'000;
constexpr std::size_t trips = 300;
constexpr std::size_t events = 20'000;

GroupingEngine::Request requestOf(const TravelPlan& plan, GroupingMode mode) {
  GroupingEngine::Request request;
  request.bundles = BundleBuilder::makeBundles(travels(plan));
  request.mode = mode;
  request.settings.timeZone = *TimeZone::load("Europe/Moscow");
  return request;
}

std::size_t tripsIn(const GroupingEngine::Result& result) {
  std::size_t count = 0;
  for (const MediaGroup& group : result.groups) count += group.id.starts_with("trip-") ? 1U : 0U;
  return count;
}

/// Groups, and frees the result outside the measured time.
struct Grouping {
  GroupingEngine::Request request;
  std::optional<GroupingEngine::Result> result;

  void clear() { result.reset(); }
  void run() { result = GroupingEngine::group(request); }
};

/// Runs `theirs` several times in a row and uses the time of one run. So both take about as long,
/// and a busy machine slows both equally.
Duel duelOf(Grouping& ours, Grouping& theirs, int times = 1) {
  Duel best{1e9, 1e9};
  for (int round = 0; round < 5; ++round) {
    double theirTime = 0;
    for (int i = 0; i < times; ++i) {
      theirs.clear();
      theirTime += seconds([&] { theirs.run(); });
    }
    best.theirs = std::min(best.theirs, theirTime / times);
    ours.clear();
    best.ours = std::min(best.ours, seconds([&] { ours.run(); }));
  }
  return best;
}

void benchMode(const std::string& what, const TravelPlan& plan, const TravelPlan& fewPlan,
               GroupingMode mode) {
  Grouping ours{requestOf(plan, mode), {}};
  Grouping byDay{ours.request, {}};
  byDay.request.mode = grouping_mode::ByDate{};
  const Duel beside = duelOf(ours, byDay);
  print({fmt::format("{} ({} groups, {} of them trips) : days", what, ours.result->groups.size(),
                     tripsIn(*ours.result)),
         time(beside.ours), time(beside.theirs), beside.ratio(), 3.0});
  byDay = {};
  Grouping few{requestOf(fewPlan, mode), {}};
  const Duel growth = duelOf(ours, few, 10);
  print({fmt::format("{}, {} homes to choose from : 100,000 shots ({})", what,
                     ours.result->homeCandidates.size(), few.result->homeCandidates.size()),
         // More than 10, because a tenth of the shots may fit into the processor's cache.
         time(growth.ours), time(growth.theirs), growth.ratio(), 16.0});
}

/// The faces of all groups beside their grouping.
void benchFaces(const std::string& what, const TravelPlan& plan, GroupingMode mode) {
  Grouping grouping{requestOf(plan, std::move(mode)), {}};
  Duel best{1e9, 1e9};
  std::size_t faces = 0;
  for (int round = 0; round < 5; ++round) {
    grouping.clear();
    best.theirs = std::min(best.theirs, seconds([&] { grouping.run(); }));
    faces = 0;
    best.ours = std::min(best.ours, seconds([&] {
                           for (const MediaGroup& group : grouping.result->groups) {
                             faces += GroupFaces::of(group.bundles).faces.size();
                           }
                         }));
  }
  print({fmt::format("{} faces of {} groups, {} : grouping", faces, grouping.result->groups.size(),
                     what),
         time(best.ours), time(best.theirs), best.ratio(), 0.5});
}

}  // namespace

void benchGrouping() {
  const TravelPlan life{million, events, trips, trips};
  const TravelPlan shortLife{million / 10, events / 10, trips / 10, trips / 10};
  benchMode("events, 1,000,000 shots", life, shortLife, grouping_mode::Events{});
  benchMode("trips, 1,000,000 shots", life, shortLife, grouping_mode::Trips{});
  benchMode("trips, 1,000,000 shots of a nomad", {million, events, events, events / 2},
            {million / 10, events / 10, events / 10, events / 20}, grouping_mode::Trips{});
  benchFaces("events", life, grouping_mode::Events{});
  benchFaces("everything in one", life, grouping_mode::Flat{});
}

}  // namespace tavrix::bench
