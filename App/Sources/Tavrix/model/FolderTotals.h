#pragma once

#include <cstdint>
#include <vector>

#include "model/CheckMarks.h"

namespace tavrix {

/// The effect of a transfer of the visible, checked folders.
struct PlanCounters {
  std::uint64_t newFilesCount = 0;
  std::uint64_t newBytes = 0;
  std::uint64_t knownFilesCount = 0;
  std::uint64_t optimizedCount = 0;  ///< shots, whether skipped or not

  friend bool operator==(const PlanCounters&, const PlanCounters&) = default;
};

/// The share of each folder in the counters, from which they follow any change of the check marks.
struct FolderTotals {
  struct Folder {
    std::uint32_t key = 0;
    PlanCounters share;

    friend bool operator==(const Folder&, const Folder&) = default;
  };

  std::vector<Folder> visible;
  /// The groups that consist of skipped reduced copies only. They are not displayed; they count
  /// unless they are unchecked, or no displayed folder is checked.
  std::vector<Folder> hidden;
  bool hasFolders = false;  ///< some folder is displayed, visible or not
  /// True if no two folders can have files with the same path, so that the sum over folders is what
  /// a plan for them would count. Otherwise a plan may give other names and find other files.
  bool areApart = true;

  friend bool operator==(const FolderTotals&, const FolderTotals&) = default;
};

/// Returns the sums over the visible, checked folders. The cost depends on the number of folders.
PlanCounters countersOf(const FolderTotals& totals, const CheckMarks& checks);

}  // namespace tavrix
