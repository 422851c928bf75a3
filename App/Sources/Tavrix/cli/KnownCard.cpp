#include "cli/KnownCard.h"

#include <algorithm>

#include "Destination.h"
#include "cli/CliSentences.h"
#include "cli/FolderSource.h"
#include "cli/PhoneSource.h"
#include "cli/Quotes.h"
#include "cli/Source.h"
#include "cli/SourceSentences.h"
#include "foundation/StringMap.h"

namespace tavrix::cli {
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

std::string sentence(const CommandContext& context, const PhoneRecord& record, std::size_t known,
                     std::size_t planned) {
  const Language language = context.language();
  const std::string count = numberText(language, known);
  const std::string all = counted(language, planned, sentences::filesOfTotal);
  if (record.phoneHash == snapshotPhone(record.label).hash) {
    return say(language, sentences::cardKnownByName, cli::quoted(record.label), count, all);
  }
  return say(language, sentences::cardKnownElsewhere, count, all);
}

}  // namespace

void tellKnownCard(const CommandContext& context, const DestinationMarker::Marker& marker,
                   const TransferPlan& plan) {
  if (plan.files.empty() || isPhone(context.call.source()) || !cameraFolder(context)) return;
  const std::string own = phoneOf(context).hash;
  if (marker.record(own) != nullptr) return;
  const PhoneRecord* best = nullptr;
  std::size_t most = 0;
  for (const PhoneRecord& record : marker.records) {
    const std::size_t known = countRecorded(record, plan);
    if (known <= most) continue;
    most = known;
    best = &record;
  }
  if (best == nullptr || 2 * most < plan.files.size()) return;
  context.surroundings.err.write("tavrix: " + sentence(context, *best, most, plan.files.size()) +
                                 '\n');
}

}  // namespace tavrix::cli
