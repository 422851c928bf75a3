#include "runs/DestinationMemory.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "foundation/files/AtomicFile.h"

namespace tavrix {
namespace {

/// Returns the format to which a kept original cannot be converted. Returns nullopt if another run
/// may succeed.
std::optional<std::string> keptFormat(const LandedFile& file) {
  const auto* const kept = std::get_if<FileOutcome::KeptOriginal>(&file.outcome.kind);
  if (kept == nullptr || !isLasting(kept->reason)) return std::nullopt;
  return std::string{textOf(file.planned.conversion)};
}

constexpr std::chrono::seconds shortestSaveInterval{1};

/// Returns the paths where a planned file may land, apart from numbered ones: its own path, and the
/// unconverted path with the original extension.
std::vector<std::string> possiblePaths(const PlannedFile& file) {
  std::vector<std::string> paths{file.relativePath};
  if (isConverted(file.conversion)) {
    const std::string folder = parentPath(file.relativePath);
    const std::string name = TransferEngine::fallbackName(file);
    paths.push_back(folder.empty() ? name : folder + "/" + name);
  }
  return paths;
}

bool claimsPath(const PlannedFile& file, const std::string& path) {
  const auto paths = possiblePaths(file);
  return std::find(paths.begin(), paths.end(), path) != paths.end();
}

/// Returns the error if the marker could not be saved.
std::optional<FileError> failureOf(const std::function<void()>& save) {
  try {
    save();
    return std::nullopt;
  } catch (const FileError& error) {
    return error;
  } catch (const DestinationMarker::MarkerError& error) {
    return FileError{FileOperation::write, error.fileName(), EEXIST};
  }
}

DestinationMarker::FileRecord claimOf(DestinationMarker::FileRecord file) {
  file.size = 0;
  file.sha256 = std::nullopt;
  return file;
}

}  // namespace

DestinationMemory::DestinationMemory(Setup setup, Folder& destination, Destination::Content content)
    : setup_(std::move(setup)), destination_(destination), content_(std::move(content)) {
  const auto* const record = content_.marker->record(setup_.phone.hash);
  const auto isClaim = [](const DestinationMarker::FileRecord& file) { return file.isClaim(); };
  const bool hasClaims =
      record != nullptr && std::any_of(record->files.begin(), record->files.end(), isClaim);
  if (hasClaims) settled_ = settled(*record);
}

DestinationMarker::PhoneRecord DestinationMemory::settled(DestinationMarker::PhoneRecord record) {
  const FilesOnDisk& files = content_.view.filesOnDisk();
  for (DestinationMarker::FileRecord& file : record.files) {
    if (!file.isClaim() || content_.view.isUnreadable(file.path)) continue;
    const auto* const onDisk = files.find(file.path);
    hasOldClaims_ = hasOldClaims_ || onDisk == nullptr || onDisk->size > 0;
    if (onDisk != nullptr) file.size = onDisk->size;
  }
  return record;
}

const DestinationMarker::PhoneRecord* DestinationMemory::earlier() const {
  return settled_ ? &*settled_ : content_.marker->record(setup_.phone.hash);
}

bool DestinationMemory::isClaimed(const PlannedFile& file, const std::string& path) const {
  // A record says more than a claim. In an unreadable folder a claim would replace the record of a
  // file there.
  return !content_.view.holds(path, file.wanted()) && !content_.view.isUnreadable(path);
}

std::optional<ShotDate> DestinationMemory::dateOf(const PlannedFile& file) const {
  return recordedDate(file.asset, leadOf(file.bundle), setup_.phone.hasSerialNumber);
}

void DestinationMemory::landed(const LandedFile& file) {
  const FileOutcome& outcome = file.outcome;
  const MediaAsset& asset = file.planned.asset;
  const auto* const known = content_.view.knownAssets().record(asset);
  // An earlier record of the same file already has its digest.
  const bool wasRecorded = outcome.is<FileOutcome::AlreadyThere>() && known != nullptr &&
                           *known->path == outcome.path && known->size == outcome.bytesOnDisk;
  const bool isRemembered = wasRecorded && !file.sha256;
  if (isRemembered || !outcome.path) return;
  landed_.push_back(
      {{*outcome.path, outcome.bytesOnDisk, file.sha256, std::string{asset.id()},
        owned(asset.cloudID()), keptFormat(file), dateOf(file.planned), outcome.hasSafeName},
       wasRecorded});
  // A file under an unexpected number has no claim yet, so it is saved sooner.
  const auto interval =
      claimsPath(file.planned, *outcome.path) && !content_.view.isUnreadable(*outcome.path)
          ? setup_.saveInterval
          : std::min(setup_.saveInterval, shortestSaveInterval);
  if (setup_.now() - savedAt_ >= interval) saveQuietly(claims());
}

void DestinationMemory::save(std::vector<DestinationMarker::FileRecord> files) {
  savedAt_ = setup_.now();
  DestinationMarker::PhoneRecord record;
  record.phoneHash = setup_.phone.hash;
  record.label = setup_.phone.label;
  record.model = setup_.phone.model;
  record.firstTransfer = startedAt_;
  record.lastTransfer = savedAt_;
  record.files = std::move(files);
  record.folders = notes_;
  const auto isStillOurs = [this](const std::string& path) {
    return content_.view.isStillOurs(path);
  };
  keep(DestinationMarker::updated(earlier(), std::move(record), isStillOurs));
}

void DestinationMemory::keep(const DestinationMarker::PhoneRecord& record) {
  const auto& damaged = content_.marker->damaged;
  const bool wasRead =
      hasKept_ || std::find(damaged.begin(), damaged.end(),
                            DestinationMarker::fileName(setup_.phone.hash)) == damaged.end();
  DestinationMarker::save(destination_, record, wasRead);
  hasKept_ = true;
}

void DestinationMemory::saveFinal() {
  if (!landed_.empty()) {
    save(landedFiles());
  } else if (earlier() != nullptr) {
    keep(*earlier());
  } else if (hasKept_) {
    destination_.removeFile(DestinationMarker::fileName(setup_.phone.hash));
  }
}

std::vector<DestinationMarker::FileRecord> DestinationMemory::claims() const {
  std::vector<DestinationMarker::FileRecord> landed = landedFiles();
  if (claimed_ == nullptr) return landed;
  std::vector<DestinationMarker::FileRecord> files;
  files.reserve(claimed_->files.size() + landed_.size());
  for (const PlannedFile& file : claimed_->files) {
    for (const std::string& path : possiblePaths(file)) {
      if (!isClaimed(file, path)) continue;
      files.push_back({path, 0, std::nullopt, std::string{file.asset.id()},
                       owned(file.asset.cloudID()), std::nullopt, dateOf(file)});
    }
  }
  files.insert(files.end(), std::make_move_iterator(landed.begin()),
               std::make_move_iterator(landed.end()));
  return files;
}

std::vector<DestinationMarker::FileRecord> DestinationMemory::landedFiles() const {
  std::vector<DestinationMarker::FileRecord> files;
  files.reserve(landed_.size());
  for (std::size_t i = 0; i < landed_.size(); ++i) {
    const Landed& each = landed_[i];
    files.push_back(each.wasThere || i < synced_ ? each.file : claimOf(each.file));
  }
  return files;
}

void DestinationMemory::saveQuietly(std::vector<DestinationMarker::FileRecord> files) {
  Log& log = setup_.log == nullptr ? silentLog() : *setup_.log;
  try {
    save(std::move(files));
  } catch (const FileError& error) {
    // The run hits the same disk error and reports it. The marker is saved again at the end of the
    // run.
    writeLog(log, "marker not saved: {}", PrivateField{error.path()});
  } catch (const DestinationMarker::MarkerError& error) {
    writeLog(log, "marker not saved: {}", PrivateField{error.fileName()});
  }
}

std::vector<DestinationMarker::FolderNote> DestinationMemory::notesFor(
    const TransferPlan* plan) const {
  std::vector<DestinationMarker::FolderNote> notes;
  if (plan == nullptr) return notes;
  absl::flat_hash_set<std::string_view> folders;
  for (const PlannedFile& file : plan->files) {
    folders.insert(DestinationMarker::folderOf(file.relativePath));
  }
  std::copy_if(setup_.notes->begin(), setup_.notes->end(), std::back_inserter(notes),
               [&](const auto& note) { return folders.contains(note.name); });
  return notes;
}

void DestinationMemory::begin(const TransferPlan* claimed) {
  startedAt_ = setup_.now();
  savedAt_ = startedAt_;
  landed_.clear();
  syncing_ = synced_ = 0;
  claimed_ = claimed;
  notes_ = notesFor(claimed);
  if (claimed_ != nullptr) saveQuietly(claims());
}

void DestinationMemory::landed(DestinationMarker::FileRecord file) {
  landed_.push_back({std::move(file), true});
  if (setup_.now() - savedAt_ >= shortestSaveInterval) saveQuietly(claims());
}

std::optional<FileError> DestinationMemory::settle(bool mayGoOn) {
  if (mayGoOn && landed_.empty()) return std::nullopt;
  auto failure = failureOf([this] { saveFinal(); });
  // If nothing landed, nothing is lost: the next run ignores remaining claims.
  return landed_.empty() ? std::nullopt : std::move(failure);
}

std::optional<FileError> DestinationMemory::settleWithoutFiles() {
  if (!hasOldClaims_) return std::nullopt;
  // The claims of the killed run are settled: files that landed are on disk, the others are no
  // longer wanted.
  DestinationMarker::PhoneRecord record = *earlier();
  std::erase_if(record.files, [this](const DestinationMarker::FileRecord& file) {
    const bool mayBeThere =
        content_.view.isOnDisk(file.path) || content_.view.isUnreadable(file.path);
    return file.isClaim() && !mayBeThere;
  });
  return failureOf([&] { keep(record); });
}

}  // namespace tavrix
