#include "model/FolderListDifference.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <numeric>

namespace tavrix {
namespace {

using List = std::vector<Shared<DisplayGroup>>;

Shared<DisplayGroup> folder(std::uint32_t key) {
  DisplayGroup group;
  group.id = group.stableKey = "folder-" + std::to_string(key);
  group.key = key;
  return group;
}

List foldersOf(const std::vector<std::uint32_t>& keys) {
  List list;
  for (const std::uint32_t key : keys) list.push_back(folder(key));
  return list;
}

Shared<DisplayGroup> changed(const Shared<DisplayGroup>& group) {
  DisplayGroup copy = *group;
  ++copy.newCount;
  return copy;
}

/// Carries out the steps as a view would, one after another.
List applied(const FolderListDifference& difference, const List& before, const List& after) {
  if (difference.isReset) return after;
  List rows;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const bool isMoved = std::any_of(difference.moved.begin(), difference.moved.end(),
                                     [&](const auto& move) { return move.from == i; });
    const bool isRemoved =
        std::binary_search(difference.removed.begin(), difference.removed.end(), i);
    if (!isMoved && !isRemoved) rows.push_back(before[i]);
  }
  std::vector<std::pair<std::size_t, Shared<DisplayGroup>>> entering;
  for (const auto& move : difference.moved) entering.emplace_back(move.to, before[move.from]);
  for (const std::size_t to : difference.inserted) entering.emplace_back(to, after[to]);
  std::sort(entering.begin(), entering.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& [to, row] : entering) {
    RC_ASSERT(to <= rows.size());
    rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(to), row);
  }
  for (const std::size_t i : difference.changed) {
    RC_ASSERT(rows.at(i)->key == after.at(i)->key);
    rows[i] = after[i];
  }
  return rows;
}

/// Removes, moves, changes and inserts a few folders.
List edited(List list, std::uint32_t nextKey) {
  const auto place = [&](std::size_t size) {
    return static_cast<std::ptrdiff_t>(*rc::gen::inRange<std::size_t>(0, size));
  };
  const int edits = *rc::gen::inRange(0, 6);
  for (int i = 0; i < edits; ++i) {
    const int kind = list.empty() ? 0 : *rc::gen::inRange(0, 4);
    if (kind == 0) {
      list.insert(list.begin() + place(list.size() + 1), folder(nextKey++));
    } else if (kind == 1) {
      list.erase(list.begin() + place(list.size()));
    } else if (kind == 2) {
      auto& group = list[static_cast<std::size_t>(place(list.size()))];
      group = changed(group);
    } else {
      const auto from = list.begin() + place(list.size());
      const auto group = *from;
      list.erase(from);
      list.insert(list.begin() + place(list.size() + 1), group);
    }
  }
  return list;
}

RC_GTEST_PROP(FolderListDifference, appliedToTheOldList_givesTheNewOne, ()) {
  const auto count = *rc::gen::inRange<std::uint32_t>(0, 40);
  std::vector<std::uint32_t> keys(count);
  std::iota(keys.begin(), keys.end(), 0U);
  const DisplayGroups before{foldersOf(keys)};
  const DisplayGroups after{edited(*before, count)};
  const auto difference = differenceOf(before, after);
  const List result = applied(difference, *before, *after);
  RC_ASSERT(result.size() == after->size());
  for (std::size_t i = 0; i < result.size(); ++i) RC_ASSERT(isSame(result[i], (*after)[i]));
  const std::size_t steps = difference.removed.size() + difference.moved.size() +
                            difference.inserted.size() + difference.changed.size();
  RC_ASSERT(3 * steps <= std::max(before->size(), after->size()));
}

TEST(FolderListDifference, oneStep_isThatStep) {
  const List list = foldersOf({0, 1, 2, 3, 4, 5, 6, 7, 8});
  const auto steps = [&](List after) { return differenceOf(list, std::move(after)); };
  EXPECT_TRUE(steps(list).isEmpty());
  List moved = list;
  std::rotate(moved.begin(), moved.begin() + 1, moved.end());
  EXPECT_EQ(steps(moved).moved, (std::vector<FolderListDifference::Move>{{0, 8}}))
      << "the others stay where they are";
  List removed = list;
  removed.erase(removed.begin() + 3);
  EXPECT_THAT(steps(removed).removed, testing::ElementsAre(3));
  List renewed = list;
  renewed[5] = changed(renewed[5]);
  EXPECT_THAT(steps(renewed).changed, testing::ElementsAre(5));
}

TEST(FolderListDifference, moreThanAThird_isAReset) {
  const DisplayGroups list{foldersOf({0, 1, 2, 3, 4, 5, 6, 7, 8})};
  List three = *list;
  for (std::size_t i = 0; i < 3; ++i) three[i] = changed(three[i]);
  EXPECT_FALSE(differenceOf(list, three).isReset);
  three[3] = changed(three[3]);
  EXPECT_TRUE(differenceOf(list, three).isReset);
  List reversed{list->rbegin(), list->rend()};
  EXPECT_TRUE(differenceOf(list, reversed).isReset);
  EXPECT_TRUE(differenceOf({}, list).isReset);
}

}  // namespace
}  // namespace tavrix
