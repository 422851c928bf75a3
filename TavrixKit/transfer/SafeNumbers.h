#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/StringMap.h"
#include "foundation/files/Folder.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// The numbers of shots whose names a destination refuses. The planner numbers shots by their
/// planned names; the safe forms of two of them may be equal. All files of a shot get the same
/// number, so that they stay together. Safe to use from several threads.
class SafeNumbers {
 public:
  /// Returns true if a path is planned for another file of the run.
  using IsPlanned = std::function<bool(const std::string& path)>;

  SafeNumbers(const TransferPlan& plan, const Folder& destination)
      : plan_(plan), destination_(destination) {}

  /// Returns the number of the shot of a planned file: the first under which the safe path of each
  /// of its files is free. A file of the expected size is taken for one of an earlier run and is
  /// not in the way. The same number is returned for all files of the shot. Throws FileError.
  std::uint64_t numberOf(const PlannedFile& file, const IsPlanned& isPlanned);

 private:
  using Files = std::vector<const PlannedFile*>;

  const Files& filesOf(std::string_view bundleID);
  bool isFree(const PlannedFile& file, const std::string& path, const IsPlanned& isPlanned) const;

  const TransferPlan& plan_;
  const Folder& destination_;
  std::mutex mutex_;
  StringViewMap<Files> filesByBundle_;  ///< built for the first refused name
  StringViewMap<std::uint64_t> numbers_;
  StringMap<std::string_view> reserved_;  ///< the bundle of each path that was promised
};

}  // namespace tavrix
