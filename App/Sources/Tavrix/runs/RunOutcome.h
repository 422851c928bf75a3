#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Shared.h"
#include "foundation/files/FileError.h"
#include "foundation/files/Folder.h"
#include "history/TransferRecord.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// The remains of killed runs.
struct StagingLeftOvers {
  /// The new paths, in plain folders, of files that the phone of the next run does not have.
  std::vector<std::string> rescued;
  /// Files removed from the staging folder, including partial copies and archives.
  std::uint64_t removed = 0;
  std::uint64_t removedParts = 0;  ///< ".part" files removed from plain folders

  friend bool operator==(const StagingLeftOvers&, const StagingLeftOvers&) = default;
};

/// The result of one run into one destination.
struct RunOutcome {
  /// A folder that could not be packed and stayed a plain folder.
  struct UnpackedFolder {
    std::optional<std::string> group;  ///< nullopt for the combined archive of all files
    std::string reason;                ///< for people
  };

  TransferRecord::Status status = TransferRecord::Status::completed;
  /// The number of source folders that could not be listed.
  std::uint64_t unreadFolders = 0;
  /// The number of times the run waited for an unreachable phone.
  std::uint64_t phoneWaits = 0;
  Shared<TransferReport> report;  ///< of what was copied, whatever ended the run
  /// The error that ended an `interrupted` run.
  std::optional<FileError> interruption;
  /// The reason in words, if the run was not ended by a file error.
  std::optional<std::string> stopReason;
  bool isPacked = false;  ///< the run was meant to store its files in archives
  std::vector<UnpackedFolder> unpackedFolders;
  StagingLeftOvers leftOvers;  ///< of a killed run, cleared before this one
  /// Set if the marker could not be saved; the next run then knows only the files themselves.
  std::optional<FileError> markerFailure;
};

/// Returns true if the error is that of a volume that went, but may come back.
bool isOfLostVolume(const FileError& error);

/// Returns the error to show to the user. An error of the whole volume refers to the destination,
/// not to the temporary file on which it occurred.
FileError interruptionOf(const FileError& error, const Folder& destination);

}  // namespace tavrix
