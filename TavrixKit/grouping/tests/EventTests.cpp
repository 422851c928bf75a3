#include <gmock/gmock.h>

#include <limits>

#include "grouping/tests/GroupingTester.h"

namespace tavrix {
namespace {

using grouping_mode::Events;
using testing::IsEmpty;
using testing::SizeIs;

TEST(Events, pause_splitsWhenLongerThanTheSetting) {
  const std::vector<MediaAsset> shots{still("a", "2026-05-10T08:00:00Z"),
                                      still("b", "2026-05-10T11:00:00Z"),
                                      still("c", "2026-05-10T15:00:00Z"),
                                      still("d", "2026-05-10T19:00:00.001Z"), still("none", "")};
  struct Row {
    double hours;
    std::string expected;
  };
  const std::vector<Row> rows{
      {0,
       "event-2026-05-10: a; event-2026-05-10-2: b; event-2026-05-10-3: c; "
       "event-2026-05-10-4: d; no-date: none"},
      {2,
       "event-2026-05-10: a; event-2026-05-10-2: b; event-2026-05-10-3: c; "
       "event-2026-05-10-4: d; no-date: none"},
      {3, "event-2026-05-10: a b; event-2026-05-10-2: c; event-2026-05-10-3: d; no-date: none"},
      {4, "event-2026-05-10: a b c; event-2026-05-10-2: d; no-date: none"},
      {5, "event-2026-05-10: a b c d; no-date: none"},
      {std::numeric_limits<double>::infinity(), "event-2026-05-10: a b c d; no-date: none"},
      {std::nan(""), "event-2026-05-10: a b c d; no-date: none"},
  };
  for (const Row& row : rows) {
    GroupingSettings settings;
    settings.eventGapHours = row.hours;
    EXPECT_EQ(shape(grouped(shots, Events{}, settings)), row.expected) << row.hours;
  }
}

TEST(Events, distance_splitsBetweenShotsInARowAlone) {
  const std::vector<MediaAsset> shots{still("a", "2026-05-10T08:00:00Z", north(0)),
                                      still("b", "2026-05-10T08:01:00Z", north(13)),
                                      still("c", "2026-05-10T08:02:00Z", north(26)),
                                      still("d", "2026-05-10T08:03:00Z", north(39)),
                                      still("unlocated", "2026-05-10T08:04:00Z"),
                                      still("e", "2026-05-10T08:05:00Z", north(500))};
  const auto shapeAt = [&](double km, bool isSplit) {
    GroupingSettings settings;
    settings.eventGapKm = km;
    settings.splitByDistance = isSplit;
    return shape(grouped(shots, Events{}, settings));
  };
  EXPECT_EQ(shapeAt(5, true),
            "event-2026-05-10: a; event-2026-05-10-2: b; event-2026-05-10-3: c; "
            "event-2026-05-10-4: d unlocated e");
  EXPECT_EQ(shapeAt(5, false), "event-2026-05-10: a b c d unlocated e");
  EXPECT_EQ(shapeAt(30, true), "event-2026-05-10: a b c d unlocated e");
  EXPECT_EQ(shapeAt(std::nan(""), true), "event-2026-05-10: a b c d unlocated e");
  const double exactly = haversineDistanceKm(north(0), north(13));
  const std::vector<MediaAsset> two{shots[0], shots[1]};
  GroupingSettings settings;
  settings.eventGapKm = exactly;
  EXPECT_THAT(grouped(two, Events{}, settings).groups, SizeIs(1));
  settings.eventGapKm = std::nextafter(exactly, 0);
  EXPECT_THAT(grouped(two, Events{}, settings).groups, SizeIs(2));
}

TEST(Events, ids_areOfTheZonesDay_andNumberedWhereverTheDayComesAgain) {
  // In St. John's, clocks went back from 00:00:59 to 23:01 of the previous day.
  GroupingSettings settings;
  settings.timeZone = *TimeZone::load("America/St_Johns");
  settings.eventGapHours = 0.01;
  EXPECT_EQ(shape(grouped({still("a", "2010-11-07T02:30:30Z"), still("b", "2010-11-07T02:40:00Z"),
                           still("c", "2010-11-07T03:40:00Z")},
                          Events{}, settings)),
            "event-2010-11-07: a; event-2010-11-06: b; event-2010-11-07-2: c");
}

TEST(Events, simultaneousShots_keepCatalogueOrderAndAreApartByDistanceAlone) {
  const auto result = grouped(
      {still("b", "2026-05-10T08:00:00Z", north(0)), still("a", "2026-05-10T08:00:00Z", north(61)),
       still("c", "2026-05-10T08:00:00Z", north(62))},
      Events{});
  EXPECT_EQ(shape(result), "event-2026-05-10: b; event-2026-05-10-2: a c");
  ASSERT_TRUE(result.groups[1].place);
  EXPECT_NEAR(haversineDistanceKm(*result.groups[1].place, north(61.5)), 0, 1e-6);
  EXPECT_EQ(result.groups[1].dateStart, result.groups[1].dateEnd);
}

TEST(Events, reasons_tellWhatWasMeasured) {
  using namespace grouping_reason;
  const auto result = grouped(
      {still("a", "2026-05-10T08:00:00Z", north(0)), still("b", "2026-05-10T08:01:00Z", north(61)),
       still("c", "2026-05-10T13:13:00Z", north(61)), still("none", "")},
      Events{});
  const auto& events = std::get<EventReasons>(result.reasons.value()).events;
  ASSERT_THAT(events, SizeIs(3));
  EXPECT_EQ(events[0], (EventReasons::Event{"event-2026-05-10", FirstShot{}}));
  EXPECT_NEAR(std::get<Jump>(events[1].begin).km, 61, 1e-6);
  EXPECT_EQ(events[2].begin, EventBegin(Pause{std::chrono::minutes{312}, 4}));
  EXPECT_EQ(events[2].groupID, "event-2026-05-10-3");
}

TEST(Events, withoutDates_areTheUndatedGroupAlone_andHaveNoHome) {
  EXPECT_EQ(shape(grouped({still("a", "", north(0)), still("b", "")}, Events{})), "no-date: a b");
  EXPECT_THAT(grouped({}, Events{}).groups, IsEmpty());
  const auto result = grouped({still("a", "2026-05-10T08:00:00Z", north(0))}, Events{});
  EXPECT_THAT(result.homeCandidates, IsEmpty());
  EXPECT_FALSE(result.homeIsAmbiguous);
}

}  // namespace
}  // namespace tavrix
