#pragma once

#include <functional>
#include <optional>
#include <stop_token>
#include <string>

#include "ArchivePacker.h"
#include "ArchivePlan.h"
#include "DestinationMemory.h"
#include "SpaceWait.h"
#include "StagedFiles.h"
#include "TransferOutcome.h"
#include "foundation/TimeZone.h"
#include "media/MediaSource.h"
#include "transfer/MediaConverter.h"
#include "transfer/TransferEngine.h"

namespace tavrix {

/// One run whose files end in archives. They are fetched into the staging folder first; then one
/// archive after another is made of them, read back and given its name, and its files go. A folder
/// that cannot be packed becomes a plain one. While the disk is full the run waits.
///
/// The outcome speaks of where the files are at the end: a file in an archive has the path
/// "archive.zip/path in it", and one that was only staged when the run ended was not reached.
class PackedTransfer {
 public:
  struct Setup {
    PhoneIdentity phone;
    Packing packing;
    TimeZone zone = TimeZone::utc();        ///< of the wall-clock times in archives
    MediaConverter* converter = nullptr;    ///< without one, files are kept as they are
    Language language = Language::russian;  ///< of the reasons in the outcome
    Log* log = nullptr;                     ///< silent without one
    std::function<Instant()> now;
    SpaceWait::Setup spaceWait;
  };

  /// As TransferJob's.
  PackedTransfer(Setup setup, Folder& destination, Destination::Content content);

  /// Carries out a plan, once. Never throws what TransferEngine throws: that is in the outcome.
  TransferOutcome run(const TransferPlan& plan, MediaSource& source,
                      const TransferEngine::Progress& progress = {}, std::stop_token stop = {});

 private:
  /// Fetches all files; false when the run ended before.
  bool stage(MediaSource& source, const TransferEngine::Progress& progress);
  /// One attempt at it. Throws what the engine throws.
  void runEngine(const TransferPlan& plan, MediaSource& source,
                 const TransferEngine::Progress& progress);
  void keep(const TransferReport& report);

  void packAll(const TransferEngine::Progress& progress);
  /// Packs, or leaves in a plain folder what cannot be packed. Throws ArchivePacker::Stopped, and
  /// FileError when not even that is possible.
  void settle(const PlannedArchive& archive, const ArchiveContent& content);
  /// Nothing when it was packed; else why it cannot be. Throws ArchivePacker::Stopped.
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
  TransferOutcome outcome_;
  TransferProgressSnapshot snapshot_;
  const TransferEngine::Progress* progress_ = nullptr;
  std::uint64_t packingBytes_ = 0;  ///< of the archive in hand, written and read back
  std::uint64_t packingTotal_ = 0;
};

}  // namespace tavrix
