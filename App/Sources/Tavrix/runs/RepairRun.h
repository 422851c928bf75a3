#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "foundation/files/FileError.h"
#include "media/MediaSource.h"
#include "runs/Destination.h"
#include "runs/SpaceWait.h"
#include "transfer/CopyRepair.h"
#include "transfer/TransferEngine.h"

namespace tavrix {

/// A file that is again what its record says.
struct RepairedFile {
  std::string path;
  std::string assetID;
  std::uint64_t bytesOnDisk = 0;
  /// The new path of the damaged file; nullopt if the file was missing.
  std::optional<std::string> damagedPath{};

  friend bool operator==(const RepairedFile&, const RepairedFile&) = default;
};

/// A file that could not be fetched or written; what was at its path is still there.
struct UnrepairedFile {
  std::string path;
  std::string assetID;
  FileOutcome::Failed failure;

  friend bool operator==(const UnrepairedFile&, const UnrepairedFile&) = default;
};

/// The result of a repair: every file that was not intact is in exactly one of the lists.
struct RepairOutcome {
  std::vector<RepairedFile> repaired;        ///< in the order of the plan
  std::vector<UnrepairedFile> failed;        ///< in the order of the plan
  std::vector<CopyRepair::KeptFile> kept;    ///< by path
  bool isCancelled = false;                  ///< files that were not reached are in `kept`
  std::optional<FileError> interruption{};   ///< the error of the destination that ended it
  std::optional<FileError> markerFailure{};  ///< set if new digests could not be recorded

  std::uint64_t bytesWritten() const;
};

/// Copies lost files again from the phone to their recorded paths. A damaged file is renamed beside
/// ("IMG_1 (damaged).HEIC") once the bytes that replace it are checked against the record and on
/// stable storage. If the process is killed at any moment, no bytes are lost and another repair
/// finishes the work.
class RepairRun {
 public:
  struct Setup {
    PhoneIdentity phone;
    Language language = Language::russian;  ///< of the reasons in the outcome
    Log* log = nullptr;                     ///< nullptr: no logging
    std::function<Instant()> now;
    SpaceWait::Setup spaceWait{};
  };

  /// The folder must be open for writing, `marker` its content, and `plan` made from both. All of
  /// them must outlive this object.
  RepairRun(Setup setup, Folder& destination, const DestinationMarker::Marker& marker,
            const CopyRepair::Plan& plan);
  ~RepairRun();
  RepairRun(const RepairRun&) = delete;
  RepairRun& operator=(const RepairRun&) = delete;

  /// Fetches the files and waits while the disk is full. Never throws for a single file. Adds the
  /// digests of files that were recorded without one to the record, whose other entries stay. Call
  /// it once.
  RepairOutcome run(MediaSource& source, const TransferEngine::Progress& progress = {},
                    const std::stop_token& stop = {});

 private:
  struct Step;

  /// Carries out the steps that have no outcome yet. Returns the error that stopped it, if any.
  std::optional<FileError> attempt(MediaSource& source, const TransferEngine::Progress& progress,
                                   const std::stop_token& stop);
  TransferEngine engine(const TransferPlan& plan);
  /// Takes over the outcomes of an attempt.
  void take(const TransferReport& report);
  /// Forgets the files that landed and are not in the report, because their names may be lost.
  void dropUnsynced(const TransferReport& report);
  std::uint64_t remainingBytes() const;
  void conclude();
  /// Moves one step into the outcome.
  void conclude(std::size_t index);
  std::optional<FileError> recordDigests();

  Setup setup_;
  Folder& destination_;
  const DestinationMarker::Marker& marker_;
  const CopyRepair::Plan& plan_;
  std::vector<Step> steps_;             ///< one for each file of the plan
  std::vector<std::size_t> attempted_;  ///< the steps of the current attempt, by index
  RepairOutcome outcome_;
};

}  // namespace tavrix
