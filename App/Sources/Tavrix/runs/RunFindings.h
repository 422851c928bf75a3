#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "ArchivePlan.h"
#include "Destination.h"
#include "KnownCard.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// What a person should know of a destination before the first byte is written.
struct RunFindings {
  std::vector<UnreadableFolder> unreadableFolders;  ///< neither known nor written to
  std::optional<KnownCard> knownCard;
  std::uint64_t neededBytes = 0;  ///< that it must take at most at one time
  std::uint64_t freeBytes = 0;    ///< that it can take
};

/// `isCard` as in ConnectedSource.
RunFindings findingsOf(const TransferPlan& plan, const std::optional<Packing>& packing,
                       const Folder& destination, const Destination::Content& content,
                       const PhoneIdentity& phone, bool isCard);

/// Bytes that a run writes at most at one time: files that are to be packed lie beside the archive
/// that is being made of them.
std::uint64_t neededBytes(const TransferPlan& plan, const std::optional<Packing>& packing);

}  // namespace tavrix
