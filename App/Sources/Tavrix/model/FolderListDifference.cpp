#include "model/FolderListDifference.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace tavrix {
namespace {

using List = std::vector<Shared<DisplayGroup>>;

constexpr std::size_t noIndex = std::numeric_limits<std::size_t>::max();

std::uint32_t largestKey(const List& list) {
  std::uint32_t largest = 0;
  for (const auto& folder : list) largest = std::max(largest, folder->key);
  return largest;
}

/// Returns for each key the index of its folder, or `noIndex`.
std::vector<std::size_t> indexByKey(const List& list, std::size_t keys) {
  std::vector<std::size_t> indexes(keys, noIndex);
  for (std::size_t i = 0; i < list.size(); ++i) indexes[list[i]->key] = i;
  return indexes;
}

/// Returns for each element whether it is part of one longest ascending subsequence. The elements
/// are distinct.
std::vector<bool> longestAscent(const std::vector<std::size_t>& values) {
  std::vector<std::size_t> tails;  // index of the smallest last element, by length
  std::vector<std::size_t> previous(values.size(), noIndex);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const auto place =
        std::lower_bound(tails.begin(), tails.end(), values[i],
                         [&](std::size_t tail, std::size_t value) { return values[tail] < value; });
    if (place != tails.begin()) previous[i] = *(place - 1);
    if (place == tails.end()) {
      tails.push_back(i);
    } else {
      *place = i;
    }
  }
  std::vector<bool> isInAscent(values.size());
  for (std::size_t i = tails.empty() ? noIndex : tails.back(); i != noIndex; i = previous[i]) {
    isInAscent[i] = true;
  }
  return isInAscent;
}

/// The folders that are in both lists, in the order of the new one.
struct Kept {
  std::vector<std::size_t> from;
  std::vector<std::size_t> to;
};

void addMoves(FolderListDifference& difference, const Kept& kept) {
  const auto stays = longestAscent(kept.from);
  for (std::size_t i = 0; i < kept.to.size(); ++i) {
    if (!stays[i]) difference.moved.push_back({kept.from[i], kept.to[i]});
  }
}

FolderListDifference reset() {
  FolderListDifference difference;
  difference.isReset = true;
  return difference;
}

std::size_t stepsOf(const FolderListDifference& difference) {
  return difference.removed.size() + difference.moved.size() + difference.inserted.size() +
         difference.changed.size();
}

}  // namespace

FolderListDifference differenceOf(const DisplayGroups& before, const DisplayGroups& after) {
  FolderListDifference difference;
  if (isSame(before, after)) return difference;
  const List& old = *before;
  const List& now = *after;
  const std::size_t limit = std::max(old.size(), now.size()) / 3;
  const std::size_t keys = std::size_t{std::max(largestKey(old), largestKey(now))} + 1;
  const auto oldIndex = indexByKey(old, keys);
  const auto newIndex = indexByKey(now, keys);
  Kept kept;
  for (std::size_t i = 0; i < old.size(); ++i) {
    if (newIndex[old[i]->key] == noIndex) difference.removed.push_back(i);
  }
  for (std::size_t i = 0; i < now.size(); ++i) {
    const std::size_t from = oldIndex[now[i]->key];
    if (from == noIndex) {
      difference.inserted.push_back(i);
      continue;
    }
    kept.from.push_back(from);
    kept.to.push_back(i);
    if (!isSame(old[from], now[i])) difference.changed.push_back(i);
    if (stepsOf(difference) > limit) return reset();
  }
  addMoves(difference, kept);
  if (stepsOf(difference) > limit) return reset();
  return difference;
}

}  // namespace tavrix
