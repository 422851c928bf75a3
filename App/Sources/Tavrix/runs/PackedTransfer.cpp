#include "runs/PackedTransfer.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "archives/ZipError.h"
#include "foundation/Sentences.h"
#include "foundation/files/FileError.h"
#include "runs/Staging.h"
#include "text/RunSentences.h"

namespace tavrix {
namespace {

/// The most attempts when the disk reports free space but a write fails for lack of it.
constexpr int mostAttempts = 3;

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

}  // namespace

PackedTransfer::PackedTransfer(Setup setup, Folder& destination, Destination::Content content)
    : setup_(std::move(setup)),
      destination_(destination),
      memory_({setup_.phone, setup_.log, setup_.now}, destination, std::move(content)) {
  setup_.spaceWait.log = setup_.log;
}

RunOutcome PackedTransfer::run(const TransferPlan& plan, MediaSource& source,
                               const TransferEngine::Progress& progress, std::stop_token stop) {
  outcome_.isPacked = true;
  if (plan.files.empty()) {
    outcome_.markerFailure = memory_.settleWithoutFiles();
    return std::move(outcome_);
  }
  plan_ = &plan;
  stop_ = std::move(stop);
  spaceWait_.emplace(setup_.spaceWait, destination_, stop_);
  files_.emplace(plan, setup_.language);
  memory_.begin(nullptr);
  writeLog(log(), "transfer start: files={}, bytes={}, dest={}, zip={}", plan.files.size(),
           plan.totalBytes(), PrivateField{destination_.path()}, true);
  try {
    if (stage(source, progress)) packAll(progress);
  } catch (const ArchivePacker::Stopped&) {
    outcome_.status = TransferRecord::Status::cancelled;
  } catch (const FileError& error) {
    interrupt(error);
  }
  // By its staged files a run knows the folder again.
  const bool mayGoOn = outcome_.interruption && isOfLostVolume(*outcome_.interruption);
  if (!mayGoOn) Staging::removeQuietly(destination_);
  outcome_.report = files_->report(std::move(report_));
  if (outcome_.status == TransferRecord::Status::completed && !outcome_.report->failures.empty())
    outcome_.status = TransferRecord::Status::completedWithFailures;
  outcome_.markerFailure = memory_.settle();
  return std::move(outcome_);
}

void PackedTransfer::interrupt(const FileError& error) {
  outcome_.status = TransferRecord::Status::interrupted;
  outcome_.interruption = interruptionOf(error, destination_);
}

// Staging.

bool PackedTransfer::stage(MediaSource& source, const TransferEngine::Progress& progress) {
  const TransferPlan staged = Staging::staged(*plan_);
  const TransferEngine::Progress shown = [&](const TransferProgressSnapshot& snapshot) {
    snapshot_ = snapshot;
    if (progress) progress(snapshot);
  };
  for (int attempt = 1;; ++attempt) {
    const std::uint64_t before = files_->bytesToStage();
    try {
      runEngine(staged, source, shown);
      return true;
    } catch (const TransferEngine::Cancelled& cancelled) {
      keep(cancelled.report());
      outcome_.status = TransferRecord::Status::cancelled;
      return false;
    } catch (const TransferEngine::Interrupted& interrupted) {
      keep(interrupted.report());
      if (files_->bytesToStage() < before) attempt = 1;
      if (interrupted.underlying().code() != ENOSPC || attempt >= mostAttempts) {
        interrupt(interrupted.underlying());
        return false;
      }
    }
    const bool goesOn = spaceWait_->await(
        files_->bytesToStage(), true, [](Log& log, std::uint64_t, std::uint64_t free) {
          writeLog(log, "transfer paused: disk full (free {})", free);
        });
    if (goesOn) continue;
    outcome_.status = TransferRecord::Status::cancelled;
    return false;
  }
}

void PackedTransfer::runEngine(const TransferPlan& plan, MediaSource& source,
                               const TransferEngine::Progress& progress) {
  TransferEngine::Setup setup;
  setup.converter = setup_.converter;
  setup.log = setup_.log;
  setup.language = setup_.language;
  const PlannedFile* const first = plan.files.data();
  setup.landed = [&](const LandedFile& file) {
    files_->staged(static_cast<std::size_t>(&file.planned - first), file);
  };
  keep(TransferEngine{setup}.run(plan, source, destination_, progress, stop_));
}

void PackedTransfer::keep(const TransferReport& report) {
  report_.bytesCopied += report.bytesCopied;
  report_.convertedSizeMismatches += report.convertedSizeMismatches;
  files_->takeFailures(report);
}

// Packing.

void PackedTransfer::packAll(const TransferEngine::Progress& progress) {
  const std::vector<PlannedArchive> archives = plannedArchives(*plan_, setup_.packing);
  progress_ = &progress;
  snapshot_.stage = TransferStage::packing;
  snapshot_.packGroupsTotal = archives.size();
  for (const PlannedArchive& archive : archives) {
    const ArchiveContent content = files_->contentOf(archive, memory_.startedAt());
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
    std::optional<DestinationMarker::FileRecord> record;
    try {
      awaitSpace(archive, needed, attempt > 1);
      record = packer.pack(archive.name, content, [&](std::uint64_t bytes) { showPacking(bytes); });
    } catch (const ZipError& error) {
      return reasonOf(error, setup_.language);
    } catch (const FileError& error) {
      // Without the volume the files cannot be left as they are, either.
      if (isOfLostVolume(error) && (error.code() != ENOENT || !destination_.exists())) throw;
      if (error.code() != ENOSPC || attempt >= mostAttempts)
        return sentences::systemErrorText(setup_.language, error.code());
      packingBytes_ = 0;
    }
    if (!record) continue;
    // From here on the archive has its name, so it must not be packed a second time.
    files_->packed(archive, record->path);
    destination_.syncEntries("");
    memory_.landed(*std::move(record));
    return std::nullopt;
  }
}

void PackedTransfer::leaveUnpacked(const PlannedArchive& archive, const std::string& reason) {
  if (archive.group) {
    writeLog(log(), "pack fallback {}: {}", PrivateField{*archive.group}, PrivateField{reason});
  } else {
    writeLog(log(), "pack fallback single archive: {}", PrivateField{reason});
  }
  std::vector<DestinationMarker::FileRecord> moved;
  const auto settle = [&] {
    if (!moved.empty()) outcome_.unpackedFolders.push_back({archive.group, reason});
    for (auto& record : moved) memory_.landed(std::move(record));
  };
  try {
    files_->moveOut(archive, destination_, [&](DestinationMarker::FileRecord record) {
      moved.push_back(std::move(record));
    });
    destination_.syncVolume();
  } catch (const FileError&) {
    settle();
    throw;
  }
  settle();
}

void PackedTransfer::removeStaged(const PlannedArchive& archive) {
  try {
    if (archive.group) destination_.removeAll(Staging::stagedPath(*archive.group));
  } catch (const FileError&) {
    // They are removed with the staging folder.
  }
}

}  // namespace tavrix
