#include "grouping/MergeSuggestion.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "grouping/tests/GroupingTester.h"

namespace tavrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Home is at 0 km and has most days; trips begin beyond 100 km, another city beyond 50 km.
class MergeSuggestionTest : public testing::Test {
 protected:
  MergeSuggestionTest() {
    for (int day = 1; day <= 9; ++day) shoot(0, day);
  }

  /// Adds a shot at noon of a day of May, north of home.
  void shoot(double km, int day, int hour = 12) {
    assets.push_back(still(fmt::format("d{}h{}", day, hour),
                           fmt::format("2026-05-{:02}T{:02}:00:00Z", day, hour), north(km)));
  }
  GroupingEngine::Result result(const GroupMerges& merges = {}) const {
    GroupingEngine::Request request;
    request.bundles = BundleBuilder::makeBundles(assets);
    request.mode = grouping_mode::Trips{};
    request.homeOverride = north(0);
    request.wantsReasons = true;
    request.merges = merges;
    return GroupingEngine::group(request);
  }

  std::vector<MediaAsset> assets;
};

TEST_F(MergeSuggestionTest, outingBetweenStaysInOneCity_isSuggested) {
  for (const int day : {10, 11}) shoot(500, day);
  shoot(570, 12);
  for (const int day : {13, 14}) shoot(510, day);
  shoot(580, 15);
  shoot(505, 16);  // not long enough for a trip
  const auto suggestions = result().suggestions;
  ASSERT_THAT(suggestions, SizeIs(1));
  EXPECT_THAT(suggestions[0].groupIDs,
              ElementsAre("trip-2026-05-10", "outing-2026-05-12", "trip-2026-05-13",
                          "outing-2026-05-15", "outing-2026-05-16"));
  EXPECT_EQ(suggestions[0].firstTripID, "trip-2026-05-10");
  EXPECT_EQ(suggestions[0].trips, 2U);
  EXPECT_EQ(suggestions[0].outings, 3U);
}

TEST_F(MergeSuggestionTest, staysThatBelongApart_areNotSuggested) {
  for (const int day : {10, 11}) shoot(500, day);
  const auto before = assets;
  const auto suggestionsAfter = [&](const std::vector<std::pair<double, int>>& shots) {
    assets = before;
    for (const auto& [km, day] : shots) shoot(km, day);
    return result().suggestions.size();
  };
  EXPECT_EQ(suggestionsAfter({{570, 12}, {500, 13}}), 1U);
  EXPECT_EQ(suggestionsAfter({{570, 12}, {700, 13}}), 0U) << "another city";
  EXPECT_EQ(suggestionsAfter({{570, 12}, {570, 13}, {500, 14}}), 0U) << "a trip of its own";
  EXPECT_EQ(suggestionsAfter({{0, 12}, {500, 13}}), 0U) << "home between";
  EXPECT_EQ(suggestionsAfter({{570, 12}, {500, 20}}), 0U) << "a long pause";
  EXPECT_EQ(suggestionsAfter({{570, 12}}), 0U) << "no way back";
}

TEST_F(MergeSuggestionTest, acceptedSuggestion_takesTheOutingOutOfItsMonth) {
  for (const int day : {10, 11}) shoot(500, day);
  shoot(570, 12);
  for (const int day : {13, 14}) shoot(510, day);
  EXPECT_EQ(shape(result()),
            "month-2026-05: d1h12 d2h12 d3h12 d4h12 d5h12 d6h12 d7h12 d8h12 d9h12 d12h12; "
            "trip-2026-05-10: d10h12 d11h12; trip-2026-05-13: d13h12 d14h12");
  const GroupMerges merges{result().suggestions.at(0).groupIDs};
  const auto merged = result(merges);
  EXPECT_EQ(shape(GroupMerging::apply(merged.groups, merges)),
            "month-2026-05: d1h12 d2h12 d3h12 d4h12 d5h12 d6h12 d7h12 d8h12 d9h12; "
            "merge:outing-2026-05-12+trip-2026-05-10+trip-2026-05-13: "
            "d10h12 d11h12 d12h12 d13h12 d14h12");
  const auto& reasons = std::get<TripReasons>(*merged.reasons);
  EXPECT_THAT(reasons.months.at(0).shots, SizeIs(9));
  EXPECT_THAT(MergeSuggestions::open(merged.suggestions, merges, {}), IsEmpty());
  EXPECT_THAT(MergeSuggestions::open(merged.suggestions, {}, merges), IsEmpty());
  EXPECT_THAT(MergeSuggestions::open(merged.suggestions, {}, {}), SizeIs(1));

  // Without another stay the outing stays where it was.
  EXPECT_EQ(shape(result({{"outing-2026-05-12", "trip-2020-01-01"}})), shape(result()));
  EXPECT_EQ(shape(result({{"outing-2026-05-12"}, {"outing-2026-05-12", "trip-2026-05-10"}})),
            shape(result()));
}

}  // namespace
}  // namespace tavrix
