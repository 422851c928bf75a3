#include "PackedTransfer.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "RunSentences.h"
#include "Staging.h"
#include "archives/ZipError.h"
#include "foundation/Sentences.h"
#include "foundation/StringMap.h"
#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

/// How often a disk that says it has room may prove to have none.
constexpr int mostAttempts = 3;
/// What a desktop leaves in folders that it shows; never part of an archive.
constexpr std::string_view desktopFile = ".DS_Store";

std::uint64_t bytesOf(const TransferPlan& plan) {
  std::uint64_t bytes = 0;
  for (const PlannedFile& file : plan.files) bytes += file.asset.sizeBytes();
  return bytes;
}

std::string reasonOf(const ZipError& error, Language language) {
  switch (error.kind()) {
    case ZipError::Kind::unsafeName:
      return say(language, sentences::zipUnsafeName, error.name());
    case ZipError::Kind::duplicateName:
      return say(language, sentences::zipDuplicateName, error.name());
    case ZipError::Kind::contentChanged:
      return say(language, sentences::zipContentChanged, error.name());
    case ZipError::Kind::unreadable:
    case ZipError::Kind::mismatch:
      break;
  }
  return say(language, sentences::zipNotReadBack);
}

std::optional<std::string> owned(MediaAsset::Text text) {
  return text ? std::optional<std::string>{*text} : std::nullopt;
}

}  // namespace

PackedTransfer::PackedTransfer(Setup setup, Folder& destination, Destination::Content content)
    : setup_(std::move(setup)),
      destination_(destination),
      memory_({setup_.phone, setup_.log, setup_.now}, destination, std::move(content)) {
  setup_.spaceWait.log = setup_.log;
}

TransferOutcome PackedTransfer::run(const TransferPlan& plan, MediaSource& source,
                                    const TransferEngine::Progress& progress,
                                    std::stop_token stop) {
  outcome_.isPacked = true;
  if (plan.files.empty()) {
    outcome_.markerFailure = memory_.settleWithoutFiles();
    return std::move(outcome_);
  }
  plan_ = &plan;
  stop_ = std::move(stop);
  spaceWait_.emplace(setup_.spaceWait, destination_, stop_);
  files_.resize(plan.files.size());
  memory_.begin(nullptr);
  writeLog(log(), "transfer start: files={}, bytes={}, dest={}, zip={}", plan.files.size(),
           bytesOf(plan), PrivateField{destination_.path()}, true);
  try {
    if (stage(source, progress)) packAll(progress);
  } catch (const ArchivePacker::Stopped&) {
    outcome_.status = TransferRecord::Status::cancelled;
  } catch (const FileError& error) {
    interrupt(error);
  }
  Staging::removeQuietly(destination_);
  outcome_.report = report();
  if (outcome_.status == TransferRecord::Status::completed && !outcome_.report.failures.empty())
    outcome_.status = TransferRecord::Status::completedWithFailures;
  outcome_.markerFailure = memory_.settle();
  return std::move(outcome_);
}

void PackedTransfer::interrupt(const FileError& error) {
  outcome_.status = TransferRecord::Status::interrupted;
  outcome_.interruption = error;
  writeLog(log(), "transfer failed (local fs): {}", PrivateField{error.path()});
}

// Staging.

std::uint64_t PackedTransfer::bytesToStage() const {
  std::uint64_t bytes = 0;
  for (std::size_t i = 0; i < files_.size(); ++i) {
    if (!files_[i].outcome) bytes += plan_->files[i].asset.sizeBytes();
  }
  return bytes;
}

bool PackedTransfer::stage(MediaSource& source, const TransferEngine::Progress& progress) {
  const TransferPlan staged = Staging::staged(*plan_);
  const TransferEngine::Progress shown = [&](const TransferProgressSnapshot& snapshot) {
    snapshot_ = snapshot;
    if (progress) progress(snapshot);
  };
  for (int attempt = 1;; ++attempt) {
    const std::uint64_t before = bytesToStage();
    TransferReport report;
    try {
      runEngine(staged, source, shown, report);
      keep(report);
      return true;
    } catch (const TransferEngine::Cancelled& cancelled) {
      keep(cancelled.report());
      outcome_.status = TransferRecord::Status::cancelled;
      return false;
    } catch (const TransferEngine::Interrupted& interrupted) {
      keep(interrupted.report());
      if (bytesToStage() < before) attempt = 1;
      if (interrupted.underlying().code() != ENOSPC || attempt >= mostAttempts) {
        interrupt(interrupted.underlying());
        return false;
      }
    }
    const bool goesOn =
        spaceWait_->await(bytesToStage(), true, [](Log& log, std::uint64_t, std::uint64_t free) {
          writeLog(log, "transfer paused: disk full (free {})", free);
        });
    if (goesOn) continue;
    outcome_.status = TransferRecord::Status::cancelled;
    return false;
  }
}

void PackedTransfer::runEngine(const TransferPlan& plan, MediaSource& source,
                               const TransferEngine::Progress& progress, TransferReport& report) {
  TransferEngine::Setup setup;
  setup.converter = setup_.converter;
  setup.log = setup_.log;
  setup.language = setup_.language;
  const PlannedFile* const first = plan.files.data();
  setup.landed = [&](const LandedFile& file) {
    StagedFile& staged = files_[static_cast<std::size_t>(&file.planned - first)];
    // Found again after a pause, it has no digest, and is known already.
    if (staged.outcome && file.outcome.is<FileOutcome::AlreadyThere>()) return;
    staged.outcome = file.outcome;
    staged.sha256 = file.sha256;
    staged.isSettled = false;
    // Nothing but this run's files is in the staging folder.
    if (file.outcome.is<FileOutcome::AlreadyThere>()) staged.outcome->kind = FileOutcome::Copied{};
  };
  report = TransferEngine{setup}.run(plan, source, destination_, progress, stop_);
}

void PackedTransfer::keep(const TransferReport& report) {
  outcome_.report.bytesCopied += report.bytesCopied;
  outcome_.report.convertedSizeMismatches += report.convertedSizeMismatches;
  StringMap<const FileOutcome*> failures;
  for (const FileOutcome& file : report.files) {
    if (file.is<FileOutcome::Failed>()) failures.emplace(file.assetID, &file);
  }
  for (std::size_t i = 0; i < files_.size() && !failures.empty(); ++i) {
    const auto found = failures.find(plan_->files[i].asset.id());
    if (found == failures.end()) continue;
    files_[i].outcome = *found->second;
    files_[i].isSettled = true;
  }
}

// Packing.

bool PackedTransfer::isPackable(std::size_t index) const {
  const auto& outcome = files_[index].outcome;
  return outcome && outcome->path && lastPathComponent(*outcome->path) != desktopFile;
}

ArchiveContent PackedTransfer::contentOf(const PlannedArchive& archive) {
  ArchiveContent content;
  for (const std::size_t index : archive.files) {
    StagedFile& file = files_[index];
    if (!isPackable(index)) {
      if (!file.isSettled && file.outcome) {
        file.outcome->kind = FileOutcome::Failed{say(setup_.language, sentences::notForArchives)};
        file.outcome->path.reset();
        file.outcome->bytesOnDisk = 0;
      }
      continue;
    }
    const std::string& path = *file.outcome->path;
    const Instant modified = plan_->files[index].asset.captureDate().value_or(memory_.startedAt());
    content.entries.push_back({Staging::finalPath(path), file.outcome->bytesOnDisk, modified});
    content.paths.push_back(path);
  }
  return content;
}

void PackedTransfer::packAll(const TransferEngine::Progress& progress) {
  const std::vector<PlannedArchive> archives = plannedArchives(*plan_, setup_.packing);
  progress_ = &progress;
  snapshot_.stage = TransferStage::packing;
  snapshot_.packGroupsTotal = archives.size();
  for (const PlannedArchive& archive : archives) {
    const ArchiveContent content = contentOf(archive);
    if (!content.entries.empty()) settle(archive, content);
    ++snapshot_.packedGroups;
  }
  showPacking(0);
}

void PackedTransfer::showPacking(std::uint64_t bytes) {
  packingBytes_ += bytes;
  if (packingTotal_ > 0) {
    snapshot_.stageFraction =
        std::min(1.0, static_cast<double>(packingBytes_) / static_cast<double>(packingTotal_));
  }
  if (progress_ != nullptr && *progress_) (*progress_)(snapshot_);
}

void PackedTransfer::settle(const PlannedArchive& archive, const ArchiveContent& content) {
  std::uint64_t bytes = 0;
  for (const ZipEntry& entry : content.entries) bytes += entry.size;
  snapshot_.currentFileName = archive.name;
  packingBytes_ = 0;
  packingTotal_ = 2 * bytes;
  showPacking(0);
  writeLog(log(), "pack: {} — files={}, bytes={}", PrivateField{archive.name},
           content.entries.size(), bytes);
  if (const auto reason = tryToPack(archive, content)) leaveUnpacked(archive, *reason);
  removeStaged(archive);
}

void PackedTransfer::awaitSpace(const PlannedArchive& archive, std::uint64_t needed, bool wasFull) {
  const bool goesOn =
      spaceWait_->await(needed, wasFull, [&](Log& log, std::uint64_t bytes, std::uint64_t free) {
        if (archive.group) {
          writeLog(log, "pack paused: not enough space for {} (needed {}, free {})",
                   PrivateField{*archive.group}, bytes, free);
        } else {
          writeLog(log,
                   "pack paused: not enough space for the combined archive (needed {}, free {})",
                   bytes, free);
        }
      });
  if (!goesOn) throw ArchivePacker::Stopped{};
}

std::optional<std::string> PackedTransfer::tryToPack(const PlannedArchive& archive,
                                                     const ArchiveContent& content) {
  ArchivePacker packer{destination_, setup_.zone, stop_};
  const std::uint64_t needed = content.archiveBytes();
  for (int attempt = 1;; ++attempt) {
    try {
      awaitSpace(archive, needed, attempt > 1);
      packed(archive,
             packer.pack(archive.name, content, [&](std::uint64_t bytes) { showPacking(bytes); }));
      return std::nullopt;
    } catch (const ZipError& error) {
      return reasonOf(error, setup_.language);
    } catch (const FileError& error) {
      if (error.code() != ENOSPC || attempt >= mostAttempts)
        return sentences::systemErrorText(setup_.language, error.code());
      packingBytes_ = 0;
    }
  }
}

void PackedTransfer::packed(const PlannedArchive& archive,
                            const DestinationMarker::FileRecord& record) {
  for (const std::size_t index : archive.files) {
    StagedFile& file = files_[index];
    if (file.isSettled || !file.outcome || !file.outcome->path) continue;
    file.outcome->path = record.path + "/" + Staging::finalPath(*file.outcome->path);
    file.isSettled = true;
  }
  memory_.landed(record);
}

void PackedTransfer::leaveUnpacked(const PlannedArchive& archive, const std::string& reason) {
  if (archive.group) {
    writeLog(log(), "pack fallback {}: {}", PrivateField{*archive.group}, PrivateField{reason});
  } else {
    writeLog(log(), "pack fallback single archive: {}", PrivateField{reason});
  }
  outcome_.unpackedFolders.push_back({archive.group, reason});
  for (const std::size_t index : archive.files) {
    StagedFile& file = files_[index];
    if (file.isSettled || !file.outcome || !file.outcome->path) continue;
    const MediaAsset& asset = plan_->files[index].asset;
    file.outcome->path = Staging::moveOut(destination_, *file.outcome->path, file.sha256);
    file.outcome->name = lastPathComponent(*file.outcome->path);
    file.isSettled = true;
    memory_.landed({*file.outcome->path, file.outcome->bytesOnDisk, file.sha256,
                    std::string{asset.id()}, owned(asset.cloudID())});
  }
  destination_.syncVolume();
}

void PackedTransfer::removeStaged(const PlannedArchive& archive) {
  try {
    if (archive.group) destination_.removeAll(Staging::stagedPath(*archive.group));
  } catch (const FileError&) {
    // They go with the staging folder.
  }
}

// The outcome.

TransferReport PackedTransfer::report() const {
  TransferReport report = outcome_.report;
  for (std::size_t i = 0; i < files_.size(); ++i) {
    const StagedFile& file = files_[i];
    // What was only staged is gone again.
    if (!file.outcome || (!file.isSettled && file.outcome->path)) continue;
    const FileOutcome& outcome = report.files.emplace_back(*file.outcome);
    if (const auto* const failed = std::get_if<FileOutcome::Failed>(&outcome.kind)) {
      report.failures.push_back(outcome.name + ": " + failed->reason);
      continue;
    }
    report.bytesWritten += outcome.bytesOnDisk;
    if (outcome.is<FileOutcome::KeptOriginal>()) {
      report.conversionFallbacks.push_back(outcome.name);
    } else {
      ++report.copied;
      if (plan_->files[i].isPicture) ++report.copiedPictures;
    }
  }
  return report;
}

}  // namespace tavrix
