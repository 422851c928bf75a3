#include "runs/KnownCard.h"

#include <absl/container/flat_hash_set.h>

#include <algorithm>

namespace tavrix {
namespace {

using DestinationMarker::PhoneRecord;

std::size_t countRecorded(const PhoneRecord& record, const TransferPlan& plan) {
  absl::flat_hash_set<std::pair<std::string_view, std::uint64_t>> recorded;
  recorded.reserve(record.files.size());
  for (const auto& file : record.files) {
    if (file.localID && file.size > 0) recorded.emplace(*file.localID, file.size);
  }
  return static_cast<std::size_t>(
      std::count_if(plan.files.begin(), plan.files.end(), [&](const PlannedFile& file) {
        return recorded.contains({file.asset.id(), file.asset.sizeBytes()});
      }));
}

}  // namespace

std::optional<KnownCard> findKnownCard(const DestinationMarker::Marker& marker,
                                       const std::string& phoneHash, const TransferPlan& plan) {
  if (plan.files.empty() || marker.record(phoneHash) != nullptr) return std::nullopt;
  std::optional<KnownCard> best;
  for (const PhoneRecord& record : marker.records) {
    const std::size_t known = countRecorded(record, plan);
    if (known == 0 || 2 * known < plan.files.size() || (best && known <= best->known)) continue;
    best = KnownCard{record.label, record.phoneHash, known, plan.files.size()};
  }
  return best;
}

}  // namespace tavrix
