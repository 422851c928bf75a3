#include "runs/DestinationFindings.h"

#include <algorithm>

namespace tavrix {

std::uint64_t neededBytes(const TransferPlan& plan, const std::optional<Packing>& packing) {
  const std::uint64_t all = plan.totalBytes();
  if (!packing) return all;
  std::uint64_t largest = 0;
  for (const PlannedArchive& archive : plannedArchives(plan, *packing)) {
    std::uint64_t bytes = 0;
    for (const std::size_t index : archive.files) bytes += plan.files[index].asset.sizeBytes();
    largest = std::max(largest, bytes);
  }
  return all + largest;
}

DestinationFindings findingsOf(const TransferPlan& plan, const std::optional<Packing>& packing,
                               const DestinationMarker::FolderMaking& making,
                               const Folder& destination, const Destination::Content& content,
                               const PhoneIdentity& phone, bool isCard) {
  return {.unreadableFolders = content.view.unreadableFolders(),
          .damagedRecords = content.marker->damaged,
          .knownCard = isCard ? findKnownCard(*content.marker, phone.hash, plan) : std::nullopt,
          .again = packing ? CopiesAgain{} : copiesAgain(plan, making, content.view),
          .differing = countsOf(plan.differing),
          .neededBytes = neededBytes(plan, packing),
          .freeBytes = destination.freeBytes()};
}

}  // namespace tavrix
