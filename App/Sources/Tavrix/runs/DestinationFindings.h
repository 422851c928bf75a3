#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "runs/ArchivePlan.h"
#include "runs/Destination.h"
#include "runs/KnownCard.h"
#include "transfer/CopiesAgain.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// Facts for the user about a destination before the first byte is written.
struct DestinationFindings {
  std::vector<UnreadableFolder> unreadableFolders;  ///< not known, and never written to
  std::vector<std::string> damagedRecords;          ///< names of records that recognise nothing
  std::optional<KnownCard> knownCard;
  CopiesAgain again;
  DifferingCounts differing{};    ///< files whose size is not the expected one
  std::uint64_t neededBytes = 0;  ///< the most space needed at any one time
  std::uint64_t freeBytes = 0;    ///< the space available

  friend bool operator==(const DestinationFindings&, const DestinationFindings&) = default;
};

/// Collects the findings. `making` is how the names of the plan were made. For `isCard` see
/// ConnectedSource.
DestinationFindings findingsOf(const TransferPlan& plan, const std::optional<Packing>& packing,
                               const DestinationMarker::FolderMaking& making,
                               const Folder& destination, const Destination::Content& content,
                               const PhoneIdentity& phone, bool isCard);

/// Returns the most bytes that a run needs at any one time. Staged files exist at the same time as
/// the archive made from them.
std::uint64_t neededBytes(const TransferPlan& plan, const std::optional<Packing>& packing);

}  // namespace tavrix
