#include "history/RecordedFiles.h"

#include <algorithm>

namespace tavrix {
namespace {

using PartState = TransferRecord::PartState;

bool isFinished(const RecordSummary& run) {
  return run.status == TransferRecord::Status::completed ||
         run.status == TransferRecord::Status::completedWithFailures;
}

/// A file that no record read so far has.
struct Remaining {
  std::uint64_t sizeBytes = 0;
  std::optional<Instant> captureDate;  ///< of its shot
};

class Search {
 public:
  explicit Search(const std::vector<AssetBundle>& shots) {
    for (const AssetBundle& shot : shots) {
      for (const MediaAsset& asset : shot.assets()) {
        remaining_.emplace(asset.id(), Remaining{asset.sizeBytes(), shot.captureDate()});
      }
    }
  }

  /// Returns false if all remaining shots were taken after the run.
  bool mayFindIn(const RecordSummary& run) const {
    return std::any_of(remaining_.begin(), remaining_.end(), [&](const auto& file) {
      return !file.second.captureDate || *file.second.captureDate <= run.finishedAt;
    });
  }

  void take(const TransferRecord& record) {
    const bool isConverting =
        record.options.photoFormat != "original" || record.options.videoFormat != "original";
    for (const TransferRecord::Folder& folder : record.folders) {
      for (const TransferRecord::Shot& shot : folder.shots) {
        for (const TransferRecord::File& file : shot.files) take(shot, file, isConverting);
      }
    }
  }

  StringSet found() && { return std::move(found_); }

 private:
  void take(const TransferRecord::Shot& shot, const TransferRecord::File& file, bool isConverting) {
    if (file.state != PartState::onMac && file.state != PartState::alreadyThere) return;
    const auto wanted = remaining_.find(file.assetID);
    if (wanted == remaining_.end() || wanted->second.captureDate != shot.captureDate) return;
    // The recorded size of a converted file is that of the result.
    const bool areComparable = !isConverting && wanted->second.sizeBytes > 0 && file.bytes > 0;
    if (areComparable && wanted->second.sizeBytes != file.bytes) return;
    found_.insert(file.assetID);
    remaining_.erase(wanted);
  }

  absl::flat_hash_map<std::string_view, Remaining> remaining_;
  StringSet found_;
};

}  // namespace

std::vector<RecordSummary> finishedRuns(HistoryStore& store, const std::string& phoneHash) {
  std::vector<RecordSummary> runs = store.runs({.phone = phoneHash});
  std::erase_if(runs, [&](const RecordSummary& run) {
    return run.phoneHash != phoneHash || !isFinished(run);
  });
  return runs;
}

StringSet recordedFiles(HistoryStore& store, const std::string& phoneHash,
                        const std::vector<AssetBundle>& shots) {
  Search search{shots};
  for (const RecordSummary& run : finishedRuns(store, phoneHash)) {
    if (!search.mayFindIn(run)) break;
    try {
      if (const auto record = store.record(run.id)) search.take(*record);
    } catch (const TransferRecord::RecordError&) {
      continue;
    }
  }
  return std::move(search).found();
}

}  // namespace tavrix
