#include <gmock/gmock.h>

#include "grouping/tests/GroupingTester.h"

namespace tavrix {
namespace {

using grouping_mode::Trips;
using testing::IsEmpty;
using testing::SizeIs;

/// Returns shots of five days at home in March, of three consecutive days away in April, and one
/// without a date.
std::vector<MediaAsset> libraryOf(double tripKm) {
  return {still("h1", "2026-03-02T12:00:00Z", north(0)),
          still("h2", "2026-03-03T12:00:00Z", north(0)),
          still("h3", "2026-03-04T12:00:00Z", north(0)),
          still("h4", "2026-03-23T12:00:00Z", north(0)),
          still("h5", "2026-03-30T12:00:00Z", north(0)),
          still("t1", "2026-04-06T12:00:00Z", north(tripKm)),
          still("t2", "2026-04-07T12:00:00Z", north(tripKm)),
          still("t3", "2026-04-08T12:00:00Z", north(tripKm)),
          still("none", "", north(tripKm))};
}

const std::string march = "month-2026-03: h1 h2 h3 h4 h5";
const std::string asTrip = march + "; trip-2026-04-06: t1 t2 t3; no-date: none";
const std::string asMonth = march + "; month-2026-04: t1 t2 t3; no-date: none";

template <typename Change>
std::string shapeWith(const std::vector<MediaAsset>& shots, Change change) {
  GroupingSettings settings;
  change(settings);
  return shape(grouped(shots, Trips{}, settings));
}

TEST(Trips, stayOfEnoughDaysAndDistance_isATrip) {
  const auto shots = libraryOf(300);
  EXPECT_EQ(shapeWith(shots, [](auto&) {}), asTrip);
  EXPECT_EQ(shapeWith(shots, [](auto& s) { s.tripMinDays = 3; }), asTrip);
  EXPECT_EQ(shapeWith(shots, [](auto& s) { s.tripMinDays = 4; }), asMonth);
  EXPECT_EQ(shapeWith(shots, [](auto& s) { s.tripDistanceKm = 301; }), asMonth);
  EXPECT_EQ(shapeWith(shots, [](auto& s) { s.tripDistanceKm = std::nan(""); }), asMonth);
  EXPECT_EQ(shapeWith(libraryOf(99), [](auto&) {}), asMonth);
  EXPECT_EQ(shapeWith(shots, [](auto& s) { s.tripMaxGapHours = 24; }), asTrip);
  EXPECT_EQ(shapeWith(shots, [](auto& s) { s.tripMaxGapHours = 23.99; }), asMonth);
}

TEST(Trips, distanceEqualToTheSetting_isHome) {
  const double exactly = haversineDistanceKm(north(0), north(150));
  const auto withHome = [&](double limit) {
    return shapeWith(libraryOf(150), [&](GroupingSettings& s) {
      s.homeOverride = north(0);
      s.tripDistanceKm = limit;
    });
  };
  EXPECT_EQ(withHome(exactly), asMonth);
  EXPECT_EQ(withHome(std::nextafter(exactly, 0)), asTrip);
}

TEST(Trips, manualHome_flipsTheSidesAndLeavesTheCandidates) {
  GroupingSettings settings;
  settings.homeOverride = north(300);
  const auto flipped = grouped(libraryOf(300), Trips{}, settings);
  EXPECT_EQ(shape(flipped),
            "trip-2026-03-02: h1 h2 h3; month-2026-03: h4 h5; "
            "month-2026-04: t1 t2 t3; no-date: none");
  EXPECT_EQ(flipped.homeCandidates, grouped(libraryOf(300), Trips{}).homeCandidates);
  GroupingEngine::Request request;
  request.bundles = BundleBuilder::makeBundles(libraryOf(300));
  request.mode = Trips{};
  request.homeOverride = north(300);
  EXPECT_EQ(shape(GroupingEngine::group(request)), shape(flipped));
  request.settings.homeOverride = north(0);
  EXPECT_EQ(shape(GroupingEngine::group(request)), asTrip);
}

TEST(Trips, rivalHome_isReported) {
  auto shots = libraryOf(300);
  EXPECT_TRUE(grouped(shots, Trips{}).homeIsAmbiguous);
  shots.erase(shots.begin() + 5);
  EXPECT_FALSE(grouped(shots, Trips{}).homeIsAmbiguous);
}

TEST(Trips, withoutPositions_areMonths) {
  const auto result =
      grouped({still("a", "2026-03-31T23:00:00Z"), still("b", "2026-04-01T01:00:00Z"),
               still("c", ""), still("d", "", north(0))},
              Trips{});
  EXPECT_EQ(shape(result), "month-2026-03: a; month-2026-04: b; no-date: c d");
  EXPECT_THAT(result.homeCandidates, IsEmpty());
  EXPECT_FALSE(result.homeIsAmbiguous);
  EXPECT_THAT(grouped({}, Trips{}).groups, IsEmpty());
  EXPECT_EQ(shape(grouped({still("one", "2026-03-31T23:00:00Z", north(0))}, Trips{})),
            "month-2026-03: one");
}

struct StayRow {
  std::string what;
  std::vector<MediaAsset> shots;
  std::string expected;
};

TEST(Trips, stay_endsAtHomeInANewCityOrAfterALongPause) {
  const auto at = [](const std::string& id, const std::string& dayAndHour,
                     std::optional<double> km) {
    return still(id, "2026-04-" + dayAndHour + ":00:00Z",
                 km ? std::optional{north(*km)} : std::nullopt);
  };
  const std::vector<StayRow> rows{
      {"new city",
       {at("a", "01T10", 200), at("b", "02T10", 240), at("c", "03T10", 290), at("d", "04T10", 290)},
       "trip-2026-04-01: a b; trip-2026-04-03: c d"},
      {"the centre moves with the stay",
       {at("a", "01T10", 200), at("b", "02T10", 249), at("c", "03T10", 270)},
       "trip-2026-04-01: a b c"},
      {"home between",
       {at("a", "01T10", 200), at("b", "02T10", 200), at("h", "02T12", 0), at("c", "02T14", 200),
        at("d", "03T10", 200)},
       "trip-2026-04-01: a b; month-2026-04: h; trip-2026-04-02: c d"},
      {"two trips that begin on one day",
       {at("a", "01T10", 200), at("b", "02T01", 200), at("c", "02T02", 400), at("d", "02T03", 200),
        at("e", "02T04", 400), at("f", "03T10", 400)},
       "trip-2026-04-01: a b; month-2026-04: c d; trip-2026-04-02: e f"},
      {"a pause of exactly 48 hours",
       {at("a", "01T10", 200), at("b", "03T10", 200)},
       "trip-2026-04-01: a b"},
      {"a longer pause makes two outings",
       {at("a", "01T10", 200), at("b", "03T11", 200)},
       "month-2026-04: a b"},
      {"without position between two of one stay",
       {at("x", "01T09", {}), at("a", "01T10", 200), at("y", "01T11", {}), at("b", "02T10", 200),
        at("z", "02T11", {}), at("h", "05T10", 0)},
       "month-2026-04: x z h; trip-2026-04-01: a y b"},
      {"without position they do not bridge a pause",
       {at("a", "01T10", 200), at("x", "02T10", {}), at("b", "04T11", 200), at("c", "05T10", 200)},
       "month-2026-04: a x; trip-2026-04-04: b c"},
      {"without position between two cities",
       {at("a", "01T10", 200), at("b", "02T10", 200), at("x", "02T11", {}), at("c", "02T12", 400),
        at("d", "03T10", 400)},
       "trip-2026-04-01: a b; month-2026-04: x; trip-2026-04-02: c d"},
      {"days are of all the stay's shots, whatever their order in the catalogue",
       {at("b", "02T23", 200), at("a", "01T23", 200)},
       "trip-2026-04-01: a b"},
      {"one day is an outing",
       {at("a", "01T00", 200), at("b", "01T23", 200)},
       "month-2026-04: a b"},
  };
  GroupingSettings settings;
  settings.homeOverride = north(0);
  for (const StayRow& row : rows) {
    EXPECT_EQ(shape(grouped(row.shots, Trips{}, settings)), row.expected) << row.what;
  }
  settings.tripMinDays = 0;
  EXPECT_EQ(shape(grouped(rows[3].shots, Trips{}, settings)),
            "trip-2026-04-01: a b; trip-2026-04-02: c; trip-2026-04-02-2: d; "
            "trip-2026-04-02-3: e f");
}

TEST(Trips, monthsAndDays_areThoseOfTheZone) {
  GroupingSettings settings;
  settings.homeOverride = north(0);
  const std::vector<MediaAsset> shots{still("h", "2026-03-31T16:00:00Z", north(0)),
                                      still("a", "2026-04-01T14:00:00Z", north(200)),
                                      still("b", "2026-04-01T16:00:00Z", north(200))};
  EXPECT_EQ(shape(grouped(shots, Trips{}, settings)), "month-2026-03: h; month-2026-04: a b");
  settings.timeZone = *TimeZone::load("Asia/Tokyo");
  EXPECT_EQ(shape(grouped(shots, Trips{}, settings)), "month-2026-04: h; trip-2026-04-01: a b");
}

TEST(Trips, antimeridianAndPole_areNoBorders) {
  GroupingSettings settings;
  settings.homeOverride = GeoPoint{0, 179.9};
  const std::vector<MediaAsset> home{still("a", "2026-04-01T12:00:00Z", GeoPoint{0, -179.9}),
                                     still("b", "2026-04-02T12:00:00Z", GeoPoint{0, -179.9})};
  EXPECT_EQ(shape(grouped(home, Trips{}, settings)), "month-2026-04: a b");
  const std::vector<MediaAsset> pole{still("a", "2026-04-01T12:00:00Z", GeoPoint{89.9, 10}),
                                     still("b", "2026-04-02T12:00:00Z", GeoPoint{89.9, -170})};
  EXPECT_EQ(shape(grouped(pole, Trips{}, settings)), "trip-2026-04-01: a b");
}

TEST(Trips, reasons_tellOfEveryStayAndEveryShotOutside) {
  using namespace grouping_reason;
  GroupingSettings settings;
  settings.homeOverride = north(0);
  const auto result = grouped(
      {still("h", "2026-04-01T10:00:00Z", north(3)), still("a", "2026-04-02T10:00:00Z", north(240)),
       still("x", "2026-04-02T10:30:00Z"), still("b", "2026-04-02T11:00:00Z", north(320)),
       still("c", "2026-04-03T11:00:00Z", north(320)),
       still("d", "2026-04-07T11:00:00Z", north(320)), still("i", "2026-04-07T12:00:00Z", north(1)),
       still("e", "2026-04-07T13:00:00Z", north(500))},
      Trips{}, settings);
  const auto& reasons = std::get<TripReasons>(result.reasons.value());
  ASSERT_THAT(reasons.stays, SizeIs(4));
  EXPECT_NEAR(std::get<AwayFromHome>(reasons.stays[0].begin).km, 240, 1e-6);
  EXPECT_NEAR(std::get<NewCity>(reasons.stays[0].end).km, 80, 1e-6);
  EXPECT_EQ(reasons.stays[0].groupID, std::nullopt);
  EXPECT_EQ(reasons.stays[0].days, 1);
  EXPECT_EQ(reasons.stays[1].groupID, "trip-2026-04-02");
  EXPECT_EQ(reasons.stays[1].begin, StayBegin(std::get<NewCity>(reasons.stays[0].end)));
  EXPECT_EQ(reasons.stays[1].end, StayEnd(Pause{std::chrono::hours{96}, 48}));
  EXPECT_EQ(reasons.stays[1].shotCount, 2U);
  EXPECT_NEAR(std::get<NearHome>(reasons.stays[2].end).km, 1, 1e-6);
  EXPECT_EQ(reasons.stays[3].end, StayEnd(LastShot{}));
  ASSERT_THAT(reasons.months, SizeIs(1));
  EXPECT_EQ(shape(result), "month-2026-04: h a x d i e; trip-2026-04-02: b c");
  const auto& shots = reasons.months[0].shots;
  ASSERT_THAT(shots, SizeIs(6));
  EXPECT_NEAR(std::get<NearHome>(shots[0]).km, 3, 1e-6);
  EXPECT_EQ(shots[1], MonthReason(Outing{0}));
  EXPECT_EQ(shots[2], MonthReason(NoPosition{}));
  EXPECT_EQ(shots[3], MonthReason(Outing{2}));
  EXPECT_EQ(shots[5], MonthReason(Outing{3}));
}

TEST(Trips, reasonsWithoutHome_sayThatThereIsNone) {
  const auto result =
      grouped({still("a", "2026-04-01T10:00:00Z"), still("b", "2026-05-01T10:00:00Z")}, Trips{});
  const auto& reasons = std::get<TripReasons>(result.reasons.value());
  ASSERT_THAT(reasons.months, SizeIs(2));
  EXPECT_EQ(reasons.months[1], (TripReasons::Month{"month-2026-05", {grouping_reason::NoHome{}}}));
  GroupingEngine::Request request;
  request.mode = Trips{};
  EXPECT_EQ(GroupingEngine::group(request).reasons, std::nullopt);
}

}  // namespace
}  // namespace tavrix
