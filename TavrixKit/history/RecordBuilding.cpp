#include "history/RecordBuilding.h"

#include <algorithm>
#include <utility>

#include "foundation/StringMap.h"
#include "foundation/files/AtomicFile.h"

namespace tavrix {
namespace {

using Record = TransferRecord;

/// The outcome of every file of the run, by asset.
class Fates {
 public:
  Fates(const TransferPlan& plan, const TransferReport& report) {
    for (const FileOutcome& outcome : report.files) outcomes_.emplace(outcome.assetID, &outcome);
    for (const PlannedFile& file : plan.files) planned_.insert(file.asset.id());
    for (std::size_t i = 0; i < plan.skippedKnown.size(); ++i) {
      known_.emplace(plan.skippedKnown[i].id(), &plan.knownPaths[i]);
    }
  }

  /// Completes a file whose data from the phone are already set.
  void complete(Record::File& file) const {
    if (const auto found = outcomes_.find(file.assetID); found != outcomes_.end()) {
      return take(*found->second, file);
    }
    if (const auto found = known_.find(file.assetID); found != known_.end()) {
      file.state = Record::PartState::alreadyThere;
      file.path = *found->second;
      file.savedName = lastPathComponent(*found->second);
      return;
    }
    file.state =
        planned_.contains(file.assetID) ? Record::PartState::notReached : Record::PartState::off;
  }

 private:
  static void take(const FileOutcome& outcome, Record::File& file) {
    if (const auto* const failed = std::get_if<FileOutcome::Failed>(&outcome.kind)) {
      file.state = Record::PartState::failed;
      file.reason = failed->reason;
      if (!failed->code.code.empty()) file.reasonCode = failed->code;
      return;
    }
    file.state = outcome.is<FileOutcome::AlreadyThere>() ? Record::PartState::alreadyThere
                                                         : Record::PartState::onMac;
    file.keptOriginal = outcome.is<FileOutcome::KeptOriginal>();
    file.path = outcome.path;
    file.savedName = outcome.path ? lastPathComponent(*outcome.path) : outcome.name;
    file.bytes = outcome.bytesOnDisk;
  }

  template <typename Value>
  using MapByID = absl::flat_hash_map<std::string_view, Value>;

  MapByID<const FileOutcome*> outcomes_;
  MapByID<const std::string*> known_;
  absl::flat_hash_set<std::string_view> planned_;
};

Record::Role roleOf(const AssetBundle& bundle, const MediaAsset& asset) {
  if (bundle.isMotionPart(asset)) return Record::Role::liveVideo;
  if (!bundle.isPicture(asset)) return Record::Role::sidecar;
  return asset.isEditedVariant() ? Record::Role::edit : Record::Role::original;
}

Record::ShotKind kindOf(const AssetBundle& bundle) {
  if (bundle.isLivePhoto()) return Record::ShotKind::livePhoto;
  return bundle.primaryPicture().kind() == MediaKind::video ? Record::ShotKind::video
                                                            : Record::ShotKind::photo;
}

Record::Outcome outcomeOf(const std::vector<Record::File>& files) {
  const auto hasAny = [&](Record::PartState state) {
    return std::any_of(files.begin(), files.end(),
                       [&](const Record::File& file) { return file.state == state; });
  };
  if (hasAny(Record::PartState::failed)) return Record::Outcome::failed;
  if (hasAny(Record::PartState::notReached)) return Record::Outcome::notReached;
  if (hasAny(Record::PartState::onMac)) return Record::Outcome::onMac;
  if (hasAny(Record::PartState::alreadyThere)) return Record::Outcome::alreadyThere;
  // No file of the shot was in the run, and only reduced copies are recorded without one.
  return Record::Outcome::optimized;
}

Record::Shot shotOf(const AssetBundle& bundle, const Fates& fates) {
  const MediaAsset& lead = bundle.primaryPicture();
  Record::Shot shot;
  shot.id = lead.id();
  shot.name = lead.name();
  shot.kind = kindOf(bundle);
  shot.captureDate = bundle.captureDate();
  if (const auto position = bundle.position()) {
    shot.latitude = position->latitude;
    shot.longitude = position->longitude;
  }
  shot.files.reserve(bundle.assets().size());
  for (const MediaAsset& asset : bundle.assets()) {
    Record::File& file = shot.files.emplace_back();
    file.assetID = asset.id();
    file.role = roleOf(bundle, asset);
    file.name = asset.name();
    file.bytes = asset.sizeBytes();
    fates.complete(file);
  }
  shot.outcome = outcomeOf(shot.files);
  return shot;
}

std::vector<Record::Folder> foldersOf(const FinishedRun& run) {
  const Fates fates{run.plan, run.report};
  std::vector<Record::Folder> folders;
  StringMap<std::size_t> indexOfName;
  for (const Record::ShotInput& input : run.shots) {
    const auto [found, isNew] = indexOfName.try_emplace(input.folder, folders.size());
    if (isNew) folders.push_back({.name = input.folder, .place = std::nullopt, .shots = {}});
    Record::Folder& folder = folders[found->second];
    if (!folder.place) folder.place = input.place;
    folder.shots.push_back(shotOf(input.bundle, fates));
  }
  return folders;
}

}  // namespace

TransferRecord makeRecord(FinishedRun run) {
  TransferRecord record;
  record.id = run.id;
  record.startedAt = run.startedAt;
  record.finishedAt = run.finishedAt;
  record.status = run.status;
  record.folders = foldersOf(run);
  record.totals = totalsOf(record.folders);
  record.phoneName = std::move(run.phoneName);
  record.phoneHash = std::move(run.phoneHash);
  record.destinationPath = std::move(run.destinationPath);
  record.options = std::move(run.options);
  record.notes = std::move(run.notes);
  return record;
}

}  // namespace tavrix
