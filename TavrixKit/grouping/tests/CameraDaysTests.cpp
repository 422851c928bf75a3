#include <gmock/gmock.h>

#include "grouping/GroupMerging.h"
#include "grouping/tests/GroupingTester.h"

namespace tavrix {
namespace {

using namespace grouping_mode;
using namespace std::chrono_literals;

const GeoPoint taipei{25.03, 121.56};
const GeoPoint newYork{40.71, -74.01};

/// Returns a shot at a moment, taken with a camera whose clock was `ahead` of UTC.
MediaAsset shown(const std::string& id, const std::string& time, std::chrono::hours ahead,
                 std::optional<GeoPoint> place = {}, MediaKind kind = MediaKind::photo) {
  const auto moment = parseIso8601(time);
  return MediaAsset{id,    id,           std::nullopt, kind,           100, moment, place,
                    false, std::nullopt, std::nullopt, *moment + ahead};
}

GroupingSettings inNewYork(bool cameraDays = true) {
  GroupingSettings settings;
  settings.timeZone = *TimeZone::load("America/New_York");
  settings.cameraDays = cameraDays;
  return settings;
}

TEST(CameraDays, day_isTheOneThatTheCameraShowed) {
  const std::vector<MediaAsset> shots{
      shown("taipei.jpg", "2026-05-20T01:00:00Z", 8h),
      shown("london.jpg", "2026-05-21T01:00:00Z", 0h),
      shown("phone.mov", "2026-05-22T01:00:00Z", 8h, {}, MediaKind::video),
      shown("utc.mov", "2026-05-23T01:00:00Z", 0h, {}, MediaKind::video),
      still("file", "2026-05-24T01:00:00Z")};
  EXPECT_EQ(shape(grouped(shots, ByDate{}, inNewYork(false))),
            "2026-05-19: taipei.jpg; 2026-05-20: london.jpg; 2026-05-21: phone.mov; "
            "2026-05-22: utc.mov; 2026-05-23: file");
  // Films in UTC and dates of files are no camera's.
  EXPECT_EQ(shape(grouped(shots, ByDate{}, inNewYork())),
            "2026-05-20: taipei.jpg; 2026-05-21: london.jpg; 2026-05-22: phone.mov utc.mov; "
            "2026-05-23: file");
}

/// Knows the zone of one place.
struct ZoneOfTaipei : PlaceZones {
  std::optional<TimeZone> zoneAt(const GeoPoint& point) const override {
    return point == taipei ? TimeZone::load("Asia/Taipei") : std::nullopt;
  }
};

TEST(CameraDays, fileWithoutACamerasClock_isOfTheDayAtItsPlace) {
  GroupingSettings settings = inNewYork();
  settings.placeZones = std::make_shared<ZoneOfTaipei>();
  MediaAsset dated{"dated.jpg",      "dated.jpg", std::nullopt,
                   MediaKind::photo, 100,         parseIso8601("2026-05-20T17:00:00Z"),
                   taipei,           false,       std::nullopt,
                   std::nullopt};
  const std::vector<MediaAsset> shots{
      shown("clock.jpg", "2026-05-20T15:00:00Z", -4h, taipei), dated,
      shown("utc.mov", "2026-05-20T18:00:00Z", 0h, taipei, MediaKind::video),
      shown("elsewhere.mov", "2026-05-20T19:00:00Z", 0h, newYork, MediaKind::video)};
  EXPECT_EQ(shape(grouped(shots, ByDate{}, settings)),
            "2026-05-20: clock.jpg elsewhere.mov; 2026-05-21: dated.jpg utc.mov");
  settings.cameraDays = false;
  EXPECT_EQ(shape(grouped(shots, ByDate{}, settings)),
            "2026-05-20: clock.jpg dated.jpg utc.mov elsewhere.mov");
}

TEST(CameraDays, flightOverTheDateLine_keepsTheOrderOfMomentsAndPrintsTheSmallerDayFirst) {
  const std::vector<MediaAsset> shots{shown("auckland", "2026-01-01T11:30:00Z", 13h),
                                      shown("honolulu", "2026-01-01T20:00:00Z", -10h)};
  const auto days = grouped(shots, ByDate{}, inNewYork());
  EXPECT_EQ(shape(days), "2026-01-02: auckland; 2026-01-01: honolulu");
  auto merged = GroupMerging::apply(days.groups, {{"2026-01-02", "2026-01-01"}});
  GroupingSettings longEvents = inNewYork();
  longEvents.eventGapHours = 24;
  auto events = grouped(shots, Events{}, longEvents).groups;
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].id, "event-2026-01-02");
  using std::chrono::January;
  const DaySpan both{2026y / January / 1, 2026y / January / 2};
  for (const MediaGroup& group : {merged.at(0), events[0]}) {
    EXPECT_EQ(daysOf(group, inNewYork().timeZone), both) << group.id;
  }
  const auto inZone = grouped(shots, Events{}, inNewYork(false)).groups;
  EXPECT_EQ(inZone[0].cameraDays, std::nullopt);
  EXPECT_EQ(daysOf(inZone[0], TimeZone::utc())->first, both.first);
}

TEST(CameraDays, period_isOfTheSameDays) {
  GroupingEngine::Request request;
  request.bundles = BundleBuilder::makeBundles({shown("a", "2026-05-20T01:00:00Z", 8h)});
  request.filter.from = 2026y / std::chrono::May / 20;
  request.settings = inNewYork();
  EXPECT_EQ(GroupingEngine::group(request).groups.size(), 1U);
  request.settings = inNewYork(false);
  EXPECT_EQ(GroupingEngine::group(request).groups.size(), 0U);
}

TEST(CameraDays, stayAndHome_areCountedInThem) {
  // In Taipei an evening and the next morning; in New York all of it is one day.
  const std::vector<MediaAsset> shots{shown("home1", "2026-05-01T15:00:00Z", -4h, newYork),
                                      shown("home2", "2026-05-02T15:00:00Z", -4h, newYork),
                                      shown("home3", "2026-05-03T15:00:00Z", -4h, newYork),
                                      shown("evening", "2026-05-20T14:00:00Z", 8h, taipei),
                                      shown("morning", "2026-05-21T00:00:00Z", 8h, taipei)};
  const auto trips = grouped(shots, Trips{}, inNewYork());
  EXPECT_EQ(shape(trips), "month-2026-05: home1 home2 home3; trip-2026-05-20: evening morning");
  EXPECT_EQ(trips.homeCandidates.at(1).totalDays, 2);
  EXPECT_EQ(shape(grouped(shots, Trips{}, inNewYork(false))),
            "month-2026-05: home1 home2 home3 evening morning");
}

}  // namespace
}  // namespace tavrix
