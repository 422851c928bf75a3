#include <gmock/gmock.h>

#include "grouping/GroupMerging.h"
#include "grouping/tests/GroupingTester.h"

namespace tavrix {
namespace {

using namespace grouping_mode;
using testing::ElementsAre;

/// Returns the groups "2026-05-01" to "2026-05-05" with one shot each, and the undated group.
std::vector<MediaGroup> fiveDays() {
  std::vector<MediaAsset> shots{still("none", "")};
  for (const std::string day : {"1", "2", "3", "4", "5"}) {
    shots.push_back(still(day, "2026-05-0" + day + "T12:00:00Z", north(10 * (std::stod(day) - 3))));
  }
  return grouped(shots, ByDate{}).groups;
}

std::string mergedShape(const GroupMerges& merges) {
  return shape(GroupMerging::apply(fiveDays(), merges));
}

constexpr const char* untouched =
    "2026-05-01: 1; 2026-05-02: 2; 2026-05-03: 3; 2026-05-04: 4; 2026-05-05: 5; no-date: none";

TEST(GroupMerging, id_isTheSetOfItsMembers) {
  EXPECT_EQ(GroupMerging::mergedID({"b", "a"}), "merge:a+b");
  EXPECT_EQ(GroupMerging::mergedID({"a", "b", "a"}), "merge:a+b");
  EXPECT_EQ(GroupMerging::mergedID({"trip-2026-05-10-2", "trip-2026-05-10"}),
            "merge:trip-2026-05-10+trip-2026-05-10-2");
  EXPECT_EQ(GroupMerging::mergedID({}), "merge:");
}

TEST(GroupMerging, apply_putsMembersWhereTheFirstStood) {
  struct Row {
    std::string what;
    GroupMerges merges;
    std::string expected;
  };
  const std::vector<Row> rows{
      {"none", {}, untouched},
      {"two, in the order of the groups",
       {{"2026-05-04", "2026-05-02"}},
       "2026-05-01: 1; merge:2026-05-02+2026-05-04: 2 4; 2026-05-03: 3; 2026-05-05: 5; "
       "no-date: none"},
      {"the id tells of a member that is gone",
       {{"2026-05-04", "gone", "2026-05-02"}},
       "2026-05-01: 1; merge:2026-05-02+2026-05-04+gone: 2 4; 2026-05-03: 3; 2026-05-05: 5; "
       "no-date: none"},
      {"one survivor", {{"2026-05-04", "gone"}, {"gone"}, {}}, untouched},
      {"a member named twice", {{"2026-05-04", "2026-05-04"}}, untouched},
      {"two merges that interleave",
       {{"2026-05-02", "2026-05-05"}, {"2026-05-01", "2026-05-03"}},
       "merge:2026-05-01+2026-05-03: 1 3; merge:2026-05-02+2026-05-05: 2 5; 2026-05-04: 4; "
       "no-date: none"},
      {"claimed twice: the first has it",
       {{"2026-05-01", "2026-05-02"}, {"2026-05-02", "2026-05-03", "2026-05-04"}},
       "merge:2026-05-01+2026-05-02: 1 2; merge:2026-05-02+2026-05-03+2026-05-04: 3 4; "
       "2026-05-05: 5; no-date: none"},
      {"also when the first has no other",
       {{"gone", "2026-05-02"}, {"2026-05-02", "2026-05-03"}},
       untouched},
      {"the undated with a dated one",
       {{"no-date", "2026-05-05"}},
       "2026-05-01: 1; 2026-05-02: 2; 2026-05-03: 3; 2026-05-04: 4; "
       "merge:2026-05-05+no-date: 5 none"},
      {"ids made up so that two merges would share one",
       {{"2026-05-01", "2026-05-02", "2026-05-03+x"},
        {"2026-05-01+2026-05-02", "2026-05-03", "x", "2026-05-04"},
        {"2026-05-01+2026-05-02", "2026-05-03+x"}},
       "merge:2026-05-01+2026-05-02+2026-05-03+x: 1 2; "
       "merge:2026-05-01+2026-05-02+2026-05-03+2026-05-04+x: 3 4; 2026-05-05: 5; no-date: none"},
      {"the same again",
       {{"2026-05-01", "2026-05-02"}, {"2026-05-02", "2026-05-01"}},
       "merge:2026-05-01+2026-05-02: 1 2; 2026-05-03: 3; 2026-05-04: 4; 2026-05-05: 5; "
       "no-date: none"},
  };
  for (const Row& row : rows) EXPECT_EQ(mergedShape(row.merges), row.expected) << row.what;
}

TEST(GroupMerging, madeUpIDs_neverGiveOneIDTwice) {
  auto groups = fiveDays();
  groups.resize(4);
  groups[0].id = "a";
  groups[1].id = "b";
  groups[2].id = "c";
  groups[3].id = "d";
  EXPECT_EQ(shape(GroupMerging::apply(groups, {{"a", "b", "c+d"}, {"a+b", "c", "d"}})),
            "merge:a+b+c+d: 1 2; merge:a+b+c+d-2: 3 4");
}

TEST(GroupMerging, mergedGroup_remembersItsMembers) {
  const auto days = fiveDays();
  const auto groups = GroupMerging::apply(days, {{"2026-05-05", "no-date", "2026-05-01"}});
  const MediaGroup& merged = groups[0];
  EXPECT_THAT(merged.children, ElementsAre(days[0], days[4], days[5]));
  EXPECT_EQ(merged.dateStart, days[0].dateStart);
  EXPECT_EQ(merged.dateEnd, days[4].dateEnd);
  ASSERT_TRUE(merged.place);
  EXPECT_NEAR(haversineDistanceKm(*merged.place, north(0)), 0, 1e-6);
}

TEST(GroupMerging, stored_mergesAreAddedAndTakenAway) {
  using GroupMerging::merging;
  using GroupMerging::unmerging;
  const GroupMerges one = merging({}, {"b", "a"});
  EXPECT_EQ(one, (GroupMerges{{"a", "b"}}));
  EXPECT_EQ(unmerging(one, "merge:a+b"), GroupMerges{});
  EXPECT_EQ(unmerging(one, "merge:a"), one);
  // If a merged group is merged again, its members join the new merge.
  EXPECT_EQ(merging(one, {"c", "merge:a+b"}), (GroupMerges{{"a", "b", "c"}}));
  EXPECT_EQ(merging({{"a", "b", "x"}, {"y", "z"}}, {"b", "c"}),
            (GroupMerges{{"a", "x"}, {"y", "z"}, {"b", "c"}}));
  EXPECT_EQ(merging(one, {}), one);
}

}  // namespace
}  // namespace tavrix
