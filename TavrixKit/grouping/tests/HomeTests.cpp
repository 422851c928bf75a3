#include <gmock/gmock.h>

#include <fmt/format.h>

#include "grouping/tests/GroupingTester.h"

namespace tavrix {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// Adds `shotsADay` shots at noon of each of `days` days, from the given day of May 2026 on.
void addDays(std::vector<MediaAsset>& shots, const GeoPoint& place, int firstDay, int days,
             int shotsADay = 1) {
  for (int day = firstDay; day < firstDay + days; ++day) {
    for (int i = 0; i < shotsADay; ++i) {
      const auto time = std::chrono::sys_days{parseDay("2026-05-01").value()} +
                        std::chrono::days{day - 1} + std::chrono::hours{12};
      shots.push_back(still(fmt::format("d{}-{}-{}", day, i, shots.size()), iso8601(time), place));
    }
  }
}

std::vector<HomeCandidate> candidatesOf(const std::vector<MediaAsset>& shots,
                                        const GroupingSettings& settings = {}) {
  const auto bundles = BundleBuilder::makeBundles(shots);
  return HomeDetection::candidates(shotsByDate(bundles, settings.clock()).dated, settings);
}

TEST(HomeDetection, days_decideNotShots) {
  std::vector<MediaAsset> shots;
  addDays(shots, north(0), 1, 5);
  addDays(shots, north(300), 6, 3, 20);
  const auto candidates = candidatesOf(shots);
  ASSERT_THAT(candidates, SizeIs(2));
  EXPECT_NEAR(haversineDistanceKm(candidates[0].center, north(0)), 0, 1e-6);
  EXPECT_EQ(candidates[0].totalDays, 5);
  EXPECT_EQ(candidates[0].pointCount, 5);
  EXPECT_EQ(candidates[0].firstDate, parseIso8601("2026-05-01T12:00:00Z"));
  EXPECT_EQ(candidates[0].lastDate, parseIso8601("2026-05-05T12:00:00Z"));
  EXPECT_EQ(candidates[1].pointCount, 60);
}

TEST(HomeDetection, order_isRecentDaysThenAllDaysThenShotsThenTheEarlier) {
  std::vector<MediaAsset> shots;
  addDays(shots, north(0), 1, 9);
  addDays(shots, north(100), 10, 2, 2);
  addDays(shots, north(200), 12, 2, 3);
  addDays(shots, north(300), 14, 2, 3);
  const auto places = [&](int windowDays) {
    GroupingSettings settings;
    settings.homeWindowDays = windowDays;
    std::string text;
    for (const HomeCandidate& each : candidatesOf(shots, settings)) {
      text += fmt::format("{:.0f}:{}/{} ", haversineDistanceKm(each.center, north(0)),
                          each.recentDays, each.totalDays);
    }
    return text;
  };
  EXPECT_EQ(places(0), "0:0/9 200:0/2 300:0/2 100:0/2 ");
  EXPECT_EQ(places(-5), places(0));
  EXPECT_EQ(places(1), "300:2/2 0:0/9 200:0/2 100:0/2 ");
  // The first moment of the span is inclusive.
  EXPECT_EQ(places(3), "200:2/2 300:2/2 0:0/9 100:0/2 ");
  EXPECT_EQ(places(std::numeric_limits<int>::max()), "0:9/9 200:2/2 300:2/2 100:2/2 ");
}

TEST(HomeDetection, newestDate_isThatOfTheLocatedShots) {
  std::vector<MediaAsset> shots;
  addDays(shots, north(0), 1, 3);
  shots.push_back(still("later", "2027-05-01T12:00:00Z"));
  shots.push_back(still("undated", "", north(500)));
  GroupingSettings settings;
  settings.homeWindowDays = 2;
  const auto candidates = candidatesOf(shots, settings);
  ASSERT_THAT(candidates, SizeIs(1));
  EXPECT_EQ(candidates[0].recentDays, 3);
}

TEST(HomeDetection, days_areThoseOfTheZone) {
  const std::vector<MediaAsset> shots{still("a", "2026-05-10T14:00:00Z", north(0)),
                                      still("b", "2026-05-10T16:00:00Z", north(0))};
  EXPECT_EQ(candidatesOf(shots)[0].totalDays, 1);
  GroupingSettings settings;
  settings.timeZone = *TimeZone::load("Asia/Tokyo");
  EXPECT_EQ(candidatesOf(shots, settings)[0].totalDays, 2);
}

TEST(HomeDetection, points_joinTheEarliestPlaceWithinTheRadius) {
  std::vector<MediaAsset> shots;
  addDays(shots, north(0), 1, 1);
  addDays(shots, north(39), 2, 1);
  addDays(shots, north(19.9), 3, 1);
  addDays(shots, {10, 179.95}, 4, 1);
  addDays(shots, {10, -179.95}, 5, 1);
  addDays(shots, {89.95, 0}, 6, 1);
  addDays(shots, {89.95, 180}, 7, 1);
  const auto candidates = candidatesOf(shots);
  ASSERT_THAT(candidates, SizeIs(4));
  EXPECT_NEAR(haversineDistanceKm(candidates[0].center, north(9.95)), 0, 1e-3);
  EXPECT_NEAR(std::abs(candidates[1].center.longitude), 180, 1e-9);
  EXPECT_NEAR(candidates[2].center.latitude, 90, 1e-9);
  for (const double radius : {0.0, -1.0, std::nan("")}) {
    GroupingSettings settings;
    settings.homeRadiusKm = radius;
    EXPECT_THAT(candidatesOf(shots, settings), SizeIs(7)) << radius;
  }
}

TEST(HomeDetection, rival_needsThreeRecentDaysHalfAsManyAsTheBestAndDistance) {
  const auto isAmbiguous = [](std::int64_t best, std::int64_t other, double km) {
    const std::vector<HomeCandidate> candidates{{north(0), best, best, best, {}, {}},
                                                {north(1), 9, 9, 9, {}, {}},
                                                {north(km), other, other, other, {}, {}}};
    return HomeDetection::isAmbiguous(candidates, 100);
  };
  EXPECT_TRUE(isAmbiguous(6, 3, 101));
  EXPECT_TRUE(isAmbiguous(3, 3, 101));
  EXPECT_FALSE(isAmbiguous(7, 3, 101));
  EXPECT_FALSE(isAmbiguous(4, 2, 101));
  EXPECT_FALSE(isAmbiguous(6, 3, 99));
  const double exactly = haversineDistanceKm(north(0), north(101));
  const std::vector<HomeCandidate> two{{north(0), 3, 3, 3, {}, {}}, {north(101), 3, 3, 3, {}, {}}};
  EXPECT_FALSE(HomeDetection::isAmbiguous(two, exactly));
  EXPECT_TRUE(HomeDetection::isAmbiguous(two, std::nextafter(exactly, 0)));
  EXPECT_EQ(HomeDetection::rivals(two, 100), std::vector<HomeCandidate>{two[1]});
  EXPECT_FALSE(HomeDetection::isAmbiguous({two[0]}, 0));
  EXPECT_FALSE(HomeDetection::isAmbiguous({}, 0));
}

TEST(HomeDetection, placeThatIsNowhereOnEarth_isNoCandidate) {
  const std::vector<MediaAsset> shots{still("a", "2026-05-10T14:00:00Z", GeoPoint{1e308, 0}),
                                      still("b", "2026-05-10T15:00:00Z", GeoPoint{1e308, 0}),
                                      still("c", "2026-05-10T16:00:00Z", north(0))};
  EXPECT_THAT(candidatesOf(shots), SizeIs(1));
  EXPECT_THAT(candidatesOf({}), IsEmpty());
}

}  // namespace
}  // namespace tavrix
