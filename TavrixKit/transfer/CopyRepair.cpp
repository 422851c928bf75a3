#include "transfer/CopyRepair.h"

#include <array>
#include <utility>

#include "foundation/Text.h"
#include "transfer/FileNames.h"
#include "transfer/MarkerClaims.h"

namespace tavrix::CopyRepair {
namespace {

using CopyVerification::CheckedFile;
using CopyVerification::State;
using DestinationMarker::Claim;
using DestinationMarker::FileRecord;

bool hasDigest(const FileRecord& record) {
  return record.sha256 && DestinationMarker::isDigest(*record.sha256);
}

bool isLoss(State state) {
  return state == State::changed || state == State::missing || state == State::unreadable ||
         state == State::neverConfirmed;
}

/// A file of the phone and its shot.
struct Found {
  const MediaAsset* asset = nullptr;
  const AssetBundle* bundle = nullptr;
};

class Planning {
 public:
  Planning(const DestinationMarker::Marker& marker, std::string_view phoneHash,
           const std::vector<AssetBundle>& bundles)
      : claims_(DestinationMarker::claims(marker)), phoneHash_(phoneHash) {
    for (const AssetBundle& bundle : bundles) {
      for (const MediaAsset& asset : bundle.assets()) {
        assets_.try_emplace(asset.id(), Found{&asset, &bundle});
      }
    }
  }

  Plan run(const CopyVerification::Report& report) {
    for (const CheckedFile& file : report.files) {
      if (isLoss(file.state)) settle(file);
    }
    return std::move(plan_);
  }

 private:
  void settle(const CheckedFile& file) {
    const Claim& claim = claims_.at(file.path);
    const FileRecord& record = *claim.file;
    KeptFile kept{.path = file.path, .assetID = record.localID};
    if (claim.record->phoneHash != phoneHash_) {
      kept.phone = claim.record->label;
      return keep(std::move(kept), KeptReason::otherPhone);
    }
    if (file.state == State::neverConfirmed) return keep(kept, KeptReason::neverConfirmed);
    kept.errorCode = file.errorCode;
    if (file.state == State::unreadable) return keep(kept, KeptReason::unreadable);
    kept.found = file.found;
    if (file.found != FileStatus::Type::file) return keep(kept, KeptReason::notFile);
    if (!record.localID) return keep(kept, KeptReason::archive);
    const auto found = assets_.find(*record.localID);
    if (found == assets_.end()) return keep(kept, KeptReason::notInSource);
    if (!isRecorded(found->second, record, kept)) return plan_.kept.push_back(std::move(kept));
    add(found->second, record);
  }

  void keep(KeptFile kept, KeptReason reason) {
    kept.reason = reason;
    plan_.kept.push_back(std::move(kept));
  }

  /// Returns true if the asset may be the recorded file; otherwise states the reason in `kept`.
  static bool isRecorded(const Found& found, const FileRecord& record, KeptFile& kept) {
    const MediaAsset& asset = *found.asset;
    if (asset.sizeBytes() == record.size) {
      kept.reason = KeptReason::otherContent;
      // A digest says more than a date.
      return hasDigest(record) ||
             !isAnotherShot(shotDate(asset, leadOf(*found.bundle)), record.date);
    }
    const bool hasOtherExtension = lowerExtension(record.path) != lowerExtension(asset.name());
    if (hasOtherExtension) {
      kept.reason = KeptReason::converted;
    } else if (asset.isOptimized()) {
      kept.reason = KeptReason::reducedCopy;
    } else {
      kept.reason = KeptReason::otherContent;
      kept.expectedBytes = record.size;
      kept.sourceBytes = asset.sizeBytes();
    }
    return false;
  }

  void add(const Found& found, const FileRecord& record) {
    plan_.files.files.push_back({.asset = *found.asset,
                                 .relativePath = record.path,
                                 .conversion = {},
                                 .isPicture = found.bundle->isPicture(*found.asset),
                                 .bundle = *found.bundle});
    plan_.records.push_back(record);
  }

  DestinationMarker::Claims claims_;
  std::string_view phoneHash_;
  StringViewMap<Found> assets_;
  Plan plan_;
};

}  // namespace

std::string_view textOf(KeptReason reason) {
  constexpr std::array<std::string_view, 10> texts{
      "otherPhone",   "archive", "notInSource", "converted",      "reducedCopy",
      "otherContent", "notFile", "unreadable",  "neverConfirmed", "notReached"};
  return texts.at(static_cast<std::size_t>(reason));
}

ReasonCode KeptFile::code() const {
  ReasonCode code{.code = std::string{textOf(reason)}};
  if (errorCode != 0) code.systemError = errorCode;
  code.expectedBytes = expectedBytes;
  code.receivedBytes = sourceBytes;
  return code;
}

Plan plan(const CopyVerification::Report& report, const DestinationMarker::Marker& marker,
          const std::string& phoneHash, const std::vector<AssetBundle>& bundles) {
  return Planning{marker, phoneHash, bundles}.run(report);
}

std::optional<FileOutcome::Failed> refusal(const DestinationMarker::FileRecord& record,
                                           const std::string& sha256) {
  if (!hasDigest(record) || lowerCased(*record.sha256) == sha256) return std::nullopt;
  // The caller turns it into a KeptFile, which has the sentence.
  return FileOutcome::Failed{{}, {.code = std::string{textOf(KeptReason::otherContent)}}};
}

std::optional<KeptFile> keptInsteadOf(const FileOutcome::Failed& failure) {
  const ReasonCode& reason = failure.code;
  if (reason.code == textOf(KeptReason::notInSource)) {
    return KeptFile{.path = {}, .reason = KeptReason::notInSource};
  }
  // The file has changed since the catalogue was read.
  const bool hasOtherSize = reason.code == "sizesDiffer" || reason.code == "tooManyBytes";
  if (!hasOtherSize && reason.code != textOf(KeptReason::otherContent)) return std::nullopt;
  return KeptFile{.path = {},
                  .reason = KeptReason::otherContent,
                  .expectedBytes = reason.expectedBytes,
                  .sourceBytes = reason.receivedBytes};
}

}  // namespace tavrix::CopyRepair
