#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "transfer/DestinationView.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// The planned files that are complete in the destination under other names, and why.
struct CopiesAgain {
  std::uint64_t files = 0;
  /// How the folder that holds most of them was named, if that differs from now.
  std::optional<DestinationMarker::FolderMaking> before;
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
