#include <gmock/gmock.h>

#include "grouping/tests/GroupingTester.h"

namespace tavrix {
namespace {

using testing::IsEmpty;
using namespace grouping_mode;

const TimeZone tokyo = *TimeZone::load("Asia/Tokyo");

GroupingSettings inZone(const TimeZone& zone) {
  GroupingSettings settings;
  settings.timeZone = zone;
  return settings;
}

const std::vector<MediaAsset> library{
    still("late", "2026-05-10T23:30:00Z"),  still("none", ""),
    still("early", "2026-05-10T08:00:00Z"), still("same", "2026-05-10T08:00:00Z"),
    still("june", "2026-06-01T00:00:00Z"),  still("old", "0999-12-31T12:00:00Z"),
};

TEST(GroupingEngine, byDate_cutsCalendarInTheZone) {
  EXPECT_EQ(shape(grouped(library, ByDate{DateGranularity::day})),
            "0999-12-31: old; 2026-05-10: early same late; 2026-06-01: june; no-date: none");
  EXPECT_EQ(
      shape(grouped(library, ByDate{DateGranularity::day}, inZone(tokyo))),
      "0999-12-31: old; 2026-05-10: early same; 2026-05-11: late; 2026-06-01: june; no-date: none");
  EXPECT_EQ(shape(grouped(library, ByDate{DateGranularity::month})),
            "0999-12: old; 2026-05: early same late; 2026-06: june; no-date: none");
  EXPECT_EQ(shape(grouped(library, ByDate{DateGranularity::year})),
            "0999: old; 2026: early same late june; no-date: none");
}

TEST(GroupingEngine, flat_isOneGroup_andNoneWithoutShots) {
  const auto result = grouped(library, Flat{});
  EXPECT_EQ(shape(result), "flat: old early same late june none");
  EXPECT_EQ(result.groups[0].dateStart, parseIso8601("0999-12-31T12:00:00Z"));
  EXPECT_EQ(result.groups[0].dateEnd, parseIso8601("2026-06-01T00:00:00Z"));
  EXPECT_THAT(grouped({}, Flat{}).groups, IsEmpty());
  EXPECT_THAT(grouped({}, ByDate{}).groups, IsEmpty());
}

TEST(GroupingEngine, undatedLibrary_isOneGroupWithoutDates) {
  const auto result = grouped({still("a", ""), still("b", "")}, ByDate{});
  EXPECT_EQ(shape(result), "no-date: a b");
  EXPECT_FALSE(result.groups[0].dateStart || result.groups[0].dateEnd || result.groups[0].place);
}

TEST(GroupingEngine, dayThatGoesOnAfterTheNextHasBegun_staysOneGroup) {
  // In St. John's, clocks went back one hour at 00:01: after 00:00:30 comes 23:01 of the previous
  // day.
  const auto result =
      grouped({still("a", "2010-11-07T02:00:00Z"), still("b", "2010-11-07T02:30:30Z"),
               still("c", "2010-11-07T02:40:00Z"), still("d", "2010-11-07T03:40:00Z")},
              ByDate{}, inZone(*TimeZone::load("America/St_Johns")));
  EXPECT_EQ(shape(result), "2010-11-06: a c; 2010-11-07: b d");
}

TEST(GroupingEngine, filter_isAppliedFirst) {
  GroupingEngine::Request request;
  request.bundles = BundleBuilder::makeBundles(library);
  request.mode = ByDate{};
  request.filter.from = request.filter.to = parseDay("2026-05-10");
  request.settings.timeZone = TimeZone::utc();
  const auto result = GroupingEngine::group(request);
  EXPECT_EQ(result.filteredBundles.size(), 3U);
  EXPECT_EQ(shape(result), "2026-05-10: early same late");
  EXPECT_FALSE(result.homeIsAmbiguous);
  EXPECT_THAT(result.homeCandidates, IsEmpty());
}

TEST(GroupingEngine, place_isTheSphericalCentreOfTheShots) {
  const auto result = grouped(
      {still("a", "2026-05-10T08:00:00Z", GeoPoint{10, 179}),
       still("b", "2026-05-10T09:00:00Z", GeoPoint{10, -179}), still("c", "2026-05-10T10:00:00Z")},
      ByDate{});
  ASSERT_TRUE(result.groups[0].place);
  EXPECT_NEAR(std::abs(result.groups[0].place->longitude), 180, 1e-9);
  EXPECT_NEAR(result.groups[0].place->latitude, 10.0015, 1e-3);
}

TEST(MediaGroup, counts_areFilesByKind) {
  const auto asset = [](const char* name, MediaKind kind, std::uint64_t size) {
    return MediaAsset{name,         name,         std::nullopt, kind,         size,
                      std::nullopt, std::nullopt, false,        std::nullopt, std::nullopt};
  };
  MediaGroup group;
  group.bundles = BundleBuilder::makeBundles(
      {asset("IMG_1.HEIC", MediaKind::photo, 1), asset("IMG_1.MOV", MediaKind::video, 10),
       asset("IMG_1.AAE", MediaKind::sidecar, 100), asset("x.txt", MediaKind::other, 1000)});
  EXPECT_EQ(group.counts(), (MediaGroup::MediaCounts{1, 1, 1, 1, 1111}));
}

}  // namespace
}  // namespace tavrix
