#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "transfer/DestinationView.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// The planned files that are complete in the destination under other names, and why.
struct CopiesAgain {
  /// A setting that had another value when the folders got their names.
  struct Change {
    std::string key;     ///< as in DestinationMarker::FolderMaking
    std::string before;  ///< empty if the setting was not in effect
    std::string now;     ///< empty if the setting is not in effect

    friend bool operator==(const Change&, const Change&) = default;
  };

  std::uint64_t files = 0;
  /// Since the folder that holds most of them was named, by key. Settings that were in effect only
  /// before or only now are listed only if no other has changed.
  std::vector<Change> changes;
  /// The folders that hold the files and whose names were made as now, or in an unknown way; by
  /// name.
  std::vector<std::string> folders;

  friend bool operator==(const CopiesAgain&, const CopiesAgain&) = default;
};

/// Returns the files of a plan for loose files. If the plan is not limited to new files, copying
/// again is wanted, and there are none. `making` is how the names of the plan were made.
CopiesAgain copiesAgain(const TransferPlan& plan, const DestinationMarker::FolderMaking& making,
                        const DestinationView& destination);

}  // namespace tavrix
