// Invariants of grouping for every library, mode and settings.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "grouping/GroupMerging.h"
#include "grouping/tests/GroupingTester.h"

namespace tavrix {
namespace {

using namespace grouping_mode;

class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed * 2 + 1) {}
  std::uint64_t below(std::uint64_t limit) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return (state_ >> 33U) % limit;
  }
  bool isOnce(std::uint64_t in) { return below(in) == 0; }
  template <typename Value>
  Value oneOf(const std::vector<Value>& values) {
    return values[below(values.size())];
  }

 private:
  std::uint64_t state_;
};

/// Returns a random place near home, far from it, at the 180th meridian or at a pole.
GeoPoint somePlace(Random& random) {
  static const std::vector<GeoPoint> centers{{41.9, 12.5}, {42.4, 12.5},   {45, 9},
                                             {0, 179.99},  {0.1, -179.99}, {89.99, 30},
                                             {90, 0},      {-90, 0},       {-41.9, -167.5}};
  GeoPoint point = random.oneOf(centers);
  point.latitude =
      std::clamp(point.latitude + static_cast<double>(random.below(9)) * 0.05, -90.0, 90.0);
  return point;
}

/// Returns a random library: runs of shots at one place, with pauses. Some shots have the same
/// moment, some have no position or date, and they are not in order.
std::vector<MediaAsset> someLibrary(Random& random) {
  std::vector<MediaAsset> assets;
  Instant moment = parseIso8601("2025-12-28T20:00:00Z").value();
  GeoPoint place = somePlace(random);
  const std::uint64_t undatedIn = random.oneOf<std::uint64_t>({1, 3, 20, 1000});
  const std::uint64_t unlocatedIn = random.oneOf<std::uint64_t>({1, 3, 20, 1000});
  const std::uint64_t count = random.below(40);
  for (std::uint64_t i = 0; i < count; ++i) {
    if (random.isOnce(5)) place = somePlace(random);
    moment += random.oneOf<Instant::duration>({std::chrono::seconds{0}, std::chrono::minutes{10},
                                               std::chrono::hours{4}, std::chrono::hours{23},
                                               std::chrono::hours{48}, std::chrono::hours{1000}});
    assets.push_back(still("A" + std::to_string(i), random.isOnce(undatedIn) ? "" : iso8601(moment),
                           random.isOnce(unlocatedIn) ? std::nullopt : std::optional{place}));
  }
  for (std::size_t i = assets.size(); i > 1; --i) {
    if (random.isOnce(3)) std::swap(assets[i - 1], assets[random.below(i)]);
  }
  return assets;
}

GroupingSettings someSettings(Random& random) {
  static const std::vector<TimeZone> zones{TimeZone::utc(), *TimeZone::load("Asia/Tokyo"),
                                           *TimeZone::load("America/St_Johns"),
                                           *TimeZone::load("Pacific/Kiritimati")};
  const std::vector<double> lengths{
      0, 2, 4, 30, 48, 100, 20016, std::numeric_limits<double>::infinity(), std::nan(""), -1};
  GroupingSettings settings;
  settings.timeZone = random.oneOf(zones);
  if (random.isOnce(3)) return settings;
  for (double* const field :
       {&settings.eventGapHours, &settings.eventGapKm, &settings.tripDistanceKm,
        &settings.tripCityKm, &settings.homeRadiusKm, &settings.tripMaxGapHours}) {
    if (random.isOnce(2)) *field = random.oneOf(lengths);
  }
  settings.splitByDistance = !random.isOnce(4);
  settings.tripMinDays = random.oneOf<int>({-1, 0, 1, 2, 3, std::numeric_limits<int>::max()});
  settings.homeWindowDays = random.oneOf<int>({-1, 0, 1, 180, std::numeric_limits<int>::max()});
  if (random.isOnce(3)) settings.homeOverride = somePlace(random);
  return settings;
}

const std::vector<GroupingMode> modes{ByDate{DateGranularity::day},
                                      ByDate{DateGranularity::month},
                                      ByDate{DateGranularity::year},
                                      Events{},
                                      Trips{},
                                      Flat{}};

std::multiset<std::string> idsOf(const std::vector<AssetBundle>& bundles) {
  std::multiset<std::string> ids;
  for (const AssetBundle& bundle : bundles) ids.insert(bundle.id());
  return ids;
}

/// Checks that every shot is in one group, ids are unique, dates match, dated groups are in order
/// and the undated group is last.
void expectWhole(const std::vector<MediaGroup>& groups, const std::vector<AssetBundle>& kept) {
  std::set<std::string> ids;
  std::vector<AssetBundle> shots;
  for (const MediaGroup& group : groups) {
    EXPECT_TRUE(ids.insert(group.id).second) << group.id;
    EXPECT_FALSE(group.bundles.empty()) << group.id;
    shots.insert(shots.end(), group.bundles.begin(), group.bundles.end());
    EXPECT_EQ(group.dateStart.has_value(), group.dateEnd.has_value());
    for (const AssetBundle& bundle : group.bundles) {
      const auto date = bundle.captureDate();
      EXPECT_TRUE(!date || (group.dateStart <= date && date <= group.dateEnd)) << group.id;
    }
  }
  EXPECT_EQ(idsOf(shots), idsOf(kept));
}

void expectOrdered(const std::vector<MediaGroup>& groups) {
  for (std::size_t i = 1; i < groups.size(); ++i) {
    const MediaGroup& before = groups[i - 1];
    EXPECT_TRUE(before.dateStart) << before.id;
    if (!groups[i].dateStart) continue;
    EXPECT_TRUE(std::tie(before.dateStart, before.id) < std::tie(groups[i].dateStart, groups[i].id))
        << before.id;
  }
}

/// Checks that each event and each shot outside the trips has one reason.
void expectReasons(const GroupingEngine::Result& result) {
  std::map<std::string, std::size_t> shots;
  for (const MediaGroup& group : result.groups) shots[group.id] = group.bundles.size();
  shots.erase("no-date");
  std::map<std::string, std::size_t> told;
  if (const auto* const events = std::get_if<EventReasons>(&*result.reasons)) {
    for (const auto& event : events->events) told[event.groupID] = shots[event.groupID];
    EXPECT_EQ(told, shots);
  }
  if (const auto* const trips = std::get_if<TripReasons>(&*result.reasons)) {
    for (const auto& stay : trips->stays) {
      EXPECT_EQ(stay.groupID.has_value(), stay.days >= stay.minDays);
      if (stay.groupID) told[*stay.groupID] = stay.shotCount;
    }
    for (const auto& month : trips->months) told[month.groupID] = month.shots.size();
    EXPECT_EQ(told, shots);
  }
}

TEST(Grouping, anyLibraryInAnyModeAndSetting_losesNothingAndIsTheSameAgain) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    Random random{seed};
    const auto assets = someLibrary(random);
    const GroupingSettings settings = someSettings(random);
    for (const GroupingMode& mode : modes) {
      const auto result = grouped(assets, mode, settings);
      expectWhole(result.groups, result.filteredBundles);
      expectOrdered(result.groups);
      expectReasons(result);
      EXPECT_EQ(result.filteredBundles.size(), assets.size());
      const auto again = grouped(assets, mode, settings);
      EXPECT_EQ(result.groups, again.groups);
      EXPECT_EQ(result.homeCandidates, again.homeCandidates);
      if (testing::Test::HasFailure()) FAIL() << "seed " << seed << " mode " << mode.index();
    }
  }
}

/// Returns a random merge of some of the groups, sometimes with an id that no group has.
std::vector<std::string> someMerge(Random& random, const std::vector<MediaGroup>& groups) {
  std::vector<std::string> ids;
  for (const MediaGroup& group : groups) {
    if (random.isOnce(3)) ids.push_back(group.id);
  }
  if (random.isOnce(2)) ids.emplace_back("month-1900-01");
  if (random.isOnce(4) && !ids.empty()) ids.push_back(ids.front());
  return ids;
}

TEST(Grouping, anyMerges_loseNothing_andTakenBackLeaveWhatWasThere) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    Random random{seed};
    const auto result = grouped(someLibrary(random), random.oneOf(modes), someSettings(random));
    GroupMerges merges;
    for (std::uint64_t i = random.below(4); i > 0; --i) {
      merges.push_back(someMerge(random, result.groups));
    }
    const auto merged = GroupMerging::apply(result.groups, merges);
    expectWhole(merged, result.filteredBundles);
    std::vector<MediaGroup> apart;
    for (const MediaGroup& group : merged) {
      EXPECT_TRUE(group.children.empty() || group.children.size() > 1);
      if (group.children.empty()) apart.push_back(group);
      apart.insert(apart.end(), group.children.begin(), group.children.end());
    }
    const auto byID = [](const MediaGroup& a, const MediaGroup& b) { return a.id < b.id; };
    auto expected = result.groups;
    std::sort(apart.begin(), apart.end(), byID);
    std::sort(expected.begin(), expected.end(), byID);
    EXPECT_EQ(apart, expected);

    const auto ids = someMerge(random, result.groups);
    const GroupMerges one = GroupMerging::merging({}, ids);
    const GroupMerges none = GroupMerging::unmerging(one, GroupMerging::mergedID(ids));
    EXPECT_EQ(none, GroupMerges{});
    EXPECT_EQ(GroupMerging::apply(result.groups, none), result.groups);
    if (testing::Test::HasFailure()) FAIL() << "seed " << seed;
  }
}

TEST(Grouping, laterShot_leavesTheIDsOfGroupsBeforeIt) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    Random random{seed};
    auto assets = someLibrary(random);
    GroupingSettings settings = someSettings(random);
    // A detected home could move with every shot.
    if (!settings.homeOverride) settings.homeOverride = GeoPoint{41.9, 12.5};
    Instant last = parseIso8601("2025-12-28T20:00:00Z").value();
    for (const MediaAsset& asset : assets)
      last = std::max(last, asset.captureDate().value_or(last));
    last += random.oneOf<Instant::duration>({std::chrono::seconds{1}, std::chrono::hours{3},
                                             std::chrono::hours{30}, std::chrono::hours{3000}});
    const MediaAsset later = still(
        "Later", iso8601(last), random.isOnce(3) ? std::nullopt : std::optional{somePlace(random)});
    for (const GroupingMode& mode : modes) {
      const auto before = grouped(assets, mode, settings);
      assets.push_back(later);
      const auto after = grouped(assets, mode, settings);
      assets.pop_back();
      std::map<std::string, std::vector<AssetBundle>> now;
      for (const MediaGroup& group : after.groups) now[group.id] = group.bundles;
      const bool isByTrips = std::holds_alternative<Trips>(mode);
      for (const MediaGroup& group : before.groups) {
        // The shot can turn an outing into a trip; then the month loses shots.
        if (isByTrips && group.id.starts_with("month-")) continue;
        ASSERT_TRUE(now.contains(group.id)) << group.id << " seed " << seed;
        auto bundles = now[group.id];
        std::erase_if(bundles,
                      [](const AssetBundle& each) { return each.original().id() == "Later"; });
        // A stay that continues also gets the shots without a position after its last away shot.
        if (isByTrips) continue;
        EXPECT_EQ(bundles, group.bundles) << group.id << " seed " << seed;
      }
    }
  }
}

}  // namespace
}  // namespace tavrix
