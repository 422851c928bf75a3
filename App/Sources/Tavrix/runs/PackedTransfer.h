#pragma once

#include <functional>
#include <optional>
#include <stop_token>
#include <string>

#include "foundation/TimeZone.h"
#include "media/MediaSource.h"
#include "runs/ArchivePacker.h"
#include "runs/ArchivePlan.h"
#include "runs/DestinationMemory.h"
#include "runs/RunOutcome.h"
#include "runs/SpaceWait.h"
#include "runs/StagedFiles.h"
#include "transfer/MediaConverter.h"
#include "transfer/TransferEngine.h"

namespace tavrix {

/// One run that stores its files in archives. It first fetches them into the staging folder. Then
/// it creates one archive after another: it packs the files, reads the archive back, renames it to
/// its final name, and removes the staged files. A folder that cannot be packed stays a plain
/// folder. While the disk is full, the run waits.
///
/// The outcome reports where the files are at the end: a file in an archive has the path
/// "archive.zip/path in it". A file that was only staged when the run ended was not reached.
class PackedTransfer {
 public:
  struct Setup {
    PhoneIdentity phone;
    Packing packing;
    TimeZone zone = TimeZone::utc();        ///< for the wall-clock times in archives
    MediaConverter* converter = nullptr;    ///< nullptr: files are not converted
    Language language = Language::russian;  ///< for the reasons in the outcome
    Log* log = nullptr;                     ///< nullptr: no logging
    std::function<Instant()> now;
    SpaceWait::Setup spaceWait;
  };

  /// As for FolderTransfer.
  PackedTransfer(Setup setup, Folder& destination, Destination::Content content);

  /// Carries out a plan; call it once. Reports the errors of TransferEngine in the outcome and does
  /// not throw them.
  RunOutcome run(const TransferPlan& plan, MediaSource& source,
                 const TransferEngine::Progress& progress = {}, std::stop_token stop = {});

 private:
  /// Fetches all files. Returns false if the run ended early.
  bool stage(MediaSource& source, const TransferEngine::Progress& progress);
  /// Makes one attempt to fetch all files. Throws the errors of the engine.
  void runEngine(const TransferPlan& plan, MediaSource& source,
                 const TransferEngine::Progress& progress);
  void keep(const TransferReport& report);

  void packAll(const TransferEngine::Progress& progress);
  /// Packs the files. If that is impossible, moves them to a plain folder. Throws
  /// ArchivePacker::Stopped, and FileError if moving fails too.
  void settle(const PlannedArchive& archive, const ArchiveContent& content);
  /// Returns nullopt if the archive was packed, otherwise the reason for people. Throws
  /// ArchivePacker::Stopped.
  std::optional<std::string> tryToPack(const PlannedArchive& archive,
                                       const ArchiveContent& content);
  void awaitSpace(const PlannedArchive& archive, std::uint64_t needed, bool wasFull);
  void leaveUnpacked(const PlannedArchive& archive, const std::string& reason);
  void removeStaged(const PlannedArchive& archive);
  void showPacking(std::uint64_t bytes);

  void interrupt(const FileError& error);
  Log& log() const { return setup_.log == nullptr ? silentLog() : *setup_.log; }

  Setup setup_;
  Folder& destination_;
  DestinationMemory memory_;
  const TransferPlan* plan_ = nullptr;
  std::stop_token stop_;
  std::optional<SpaceWait> spaceWait_;
  std::optional<StagedFiles> files_;
  RunOutcome outcome_;
  TransferReport report_;  ///< what is counted while files are fetched
  TransferProgressSnapshot snapshot_;
  const TransferEngine::Progress* progress_ = nullptr;
  std::uint64_t packingBytes_ = 0;  ///< of the current archive, written and read back
  std::uint64_t packingTotal_ = 0;
};

}  // namespace tavrix
