#include "grouping/HomePeriods.h"

#include <gmock/gmock.h>

#include <fmt/format.h>

#include <chrono>
#include <random>

#include "grouping/tests/GroupingTester.h"

namespace tavrix {
namespace {

using std::chrono::days;
using std::chrono::sys_days;

/// A library made day by day.
class Life {
 public:
  /// Adds a shot at noon of every `every`th of `count` days, at a place north of Rome.
  Life& shoot(double km, int count, int every = 1) {
    for (int i = 0; i < count; ++i, day_ += days{1}) {
      if (i % every == 0) {
        shots_.push_back(still(dayText(CivilDate{day_}) + fmt::format("-{}", shots_.size()),
                               iso8601(day_ + std::chrono::hours{12}), north(km)));
      }
    }
    return *this;
  }
  /// Goes back, so that the next days are shot again.
  Life& back(int count) { return day_ -= days{count}, *this; }
  Life& pause(int count) { return day_ += days{count}, *this; }

  const std::vector<MediaAsset>& shots() const { return shots_; }

  /// Returns "km: first…last; km: first…last".
  std::string periods(const GroupingSettings& settings = {}) const {
    const auto bundles = BundleBuilder::makeBundles(shots_);
    const auto dated = shotsByDate(bundles, settings.clock()).dated;
    std::string text;
    for (const HomePeriod& period : HomePeriods::of(dated, settings)) {
      if (!text.empty()) text += "; ";
      text += fmt::format("{:.0f}: {}…{}", haversineDistanceKm(period.home.center, north(0)),
                          dayText(period.firstDay), dayText(period.lastDay));
    }
    return text;
  }

 private:
  sys_days day_ = sys_days{parseDay("2018-01-01").value()};
  std::vector<MediaAsset> shots_;
};

TEST(HomePeriods, move_isFoundOnItsDay) {
  EXPECT_EQ(Life{}.shoot(0, 300).shoot(500, 300).periods(),
            "0: 2018-01-01…2018-10-27; 500: 2018-10-28…2019-08-23");
  // Sparse days, and a pause with the move in it.
  EXPECT_EQ(Life{}.shoot(0, 300, 7).pause(60).shoot(500, 300, 7).periods(),
            "0: 2018-01-01…2018-10-22; 500: 2018-12-27…2019-10-17");
  // The owner looked for a flat, and came back for the furniture.
  EXPECT_EQ(Life{}
                .shoot(0, 250)
                .shoot(500, 5)
                .shoot(0, 45)
                .shoot(500, 20)
                .shoot(0, 3)
                .shoot(500, 200)
                .periods(),
            "0: 2018-01-01…2018-10-27; 500: 2018-10-28…2019-06-07");
  EXPECT_EQ(Life{}.shoot(0, 200).shoot(500, 200).shoot(0, 200).periods(),
            "0: 2018-01-01…2018-07-19; 500: 2018-07-20…2019-02-04; 0: 2019-02-05…2019-08-23");
}

TEST(HomePeriods, journey_isNoHome) {
  const std::string one = "0: 2018-01-01…2019-01-30";
  EXPECT_EQ(Life{}.shoot(0, 150).shoot(500, 89).shoot(0, 156).periods(), one);
  EXPECT_EQ(Life{}.shoot(0, 150).shoot(500, 90).shoot(0, 155).periods(),
            "0: 2018-01-01…2018-05-30; 500: 2018-05-31…2018-08-28; 0: 2018-08-29…2019-01-30")
      << "but 90 days are";
  EXPECT_EQ(Life{}.shoot(40, 195).shoot(0, 200).periods(), one) << "in the next town";
  // Someone who photographs only on journeys: five days of each half year.
  Life traveller;
  for (int i = 0; i < 8; ++i) traveller.shoot(0, 3).pause(60).shoot(400 + 100 * i, 5).pause(100);
  GroupingSettings allDays;
  allDays.homeWindowDays = 0;
  EXPECT_EQ(traveller.periods(allDays), "0: 2018-01-01…2021-05-28");
  EXPECT_EQ(Life{}.periods(), "");
}

TEST(HomePeriods, trips_areMeasuredFromTheHomeOfTheirTime) {
  Life life;
  life.shoot(0, 100).shoot(500, 4).shoot(0, 100).shoot(500, 150).shoot(0, 3).shoot(500, 50);
  GroupingSettings settings;
  settings.homePeriods = true;
  const auto result = grouped(life.shots(), grouping_mode::Trips{}, settings);
  std::vector<std::string> trips;
  for (const MediaGroup& group : result.groups) {
    if (group.id.starts_with("trip-")) trips.push_back(group.id);
  }
  EXPECT_THAT(trips, testing::ElementsAre("trip-2018-04-11", "trip-2018-12-21"));
  EXPECT_EQ(result.homePeriods.size(), 2U);
  const auto& stays = std::get<TripReasons>(*result.reasons).stays;
  ASSERT_EQ(stays.size(), 2U);
  for (const TripReasons::Stay& stay : stays) EXPECT_NEAR(stay.homeKm, 500, 0.1);
  // One home for all of it: nine months of the other one are a trip.
  settings.homePeriods = false;
  EXPECT_NE(shape(grouped(life.shots(), grouping_mode::Trips{}, settings)), shape(result));
  // A home that the user has chosen is the only one.
  settings.homePeriods = true;
  settings.homeOverride = north(0);
  EXPECT_TRUE(grouped(life.shots(), grouping_mode::Trips{}, settings).homePeriods.empty());
}

TEST(HomePeriods, ambiguity_isThatOfTheLastOne) {
  // Both places have days among the recent ones, but of two times.
  Life life;
  life.shoot(0, 200).shoot(500, 100);
  GroupingSettings settings;
  EXPECT_TRUE(grouped(life.shots(), grouping_mode::Trips{}, settings).homeIsAmbiguous);
  settings.homePeriods = true;
  EXPECT_FALSE(grouped(life.shots(), grouping_mode::Trips{}, settings).homeIsAmbiguous);
}

TEST(HomePeriods, anyLife_isDividedWithoutGapsIntoHomesFarApart) {
  std::mt19937 random{20261123};
  const auto any = [&](int least, int most) {
    return std::uniform_int_distribution{least, most}(random);
  };
  for (int round = 0; round < 60; ++round) {
    Life life;
    for (int part = any(1, 12); part > 0; --part) {
      life.shoot(40.0 * any(0, 12), any(1, 200), any(1, 9)).pause(any(0, 60)).back(any(0, 20));
    }
    GroupingSettings settings;
    settings.homeWindowDays = any(0, 1) * 180;
    const auto bundles = BundleBuilder::makeBundles(life.shots());
    const auto dated = shotsByDate(bundles, settings.clock()).dated;
    const auto periods = HomePeriods::of(dated, settings);
    ASSERT_FALSE(periods.empty());
    EXPECT_EQ(periods.front().begin, 0U);
    for (std::size_t i = 0; i < periods.size(); ++i) {
      const std::size_t end = i + 1 < periods.size() ? periods[i + 1].begin : dated.size();
      ASSERT_LT(periods[i].begin, end);
      const auto part = std::span{dated}.subspan(periods[i].begin, end - periods[i].begin);
      EXPECT_EQ(periods[i].home, HomeDetection::candidates(part, settings).front());
      if (i == 0) continue;
      EXPECT_GE(haversineDistanceKm(periods[i].home.center, periods[i - 1].home.center), 50);
    }
    const Homes homes{periods};
    EXPECT_EQ(homes.at(dated.size() - 1), periods.back().home.center);
  }
}

}  // namespace
}  // namespace tavrix
