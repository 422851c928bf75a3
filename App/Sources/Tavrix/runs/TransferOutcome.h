#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/files/FileError.h"
#include "foundation/files/Folder.h"
#include "history/TransferRecord.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// What a run that was killed over its packing had left in the staging folder.
struct StagingLeftOvers {
  /// Files that the phone of the next run does not hold: where they lie now, in plain folders.
  std::vector<std::string> rescued;
  std::uint64_t removed = 0;  ///< copies, half-fetched ones and unfinished archives among them

  friend bool operator==(const StagingLeftOvers&, const StagingLeftOvers&) = default;
};

/// How one run into one destination ended, and what it did.
struct TransferOutcome {
  /// A folder that was to become an archive and stayed a folder.
  struct UnpackedFolder {
    std::optional<std::string> group;  ///< nothing when it is the combined archive of all
    std::string reason;                ///< for people
  };

  TransferRecord::Status status = TransferRecord::Status::completed;
  /// Folders of the source whose files nobody could list.
  std::uint64_t unreadFolders = 0;
  /// How often the run waited for a phone that was out of reach.
  std::uint64_t phoneWaits = 0;
  TransferReport report;  ///< of what got through, however the run ended
  /// What ended an `interrupted` run.
  std::optional<FileError> interruption;
  /// The same in words, where it is no failure of a file.
  std::optional<std::string> stopReason;
  bool isPacked = false;  ///< the files were to lie in archives
  std::vector<UnpackedFolder> unpackedFolders;
  StagingLeftOvers leftOvers;  ///< of a killed run, cleared away before this one
  /// The destination could not be told what landed: the next run goes by the files alone.
  std::optional<FileError> markerFailure;
};

/// What stopped a run, for people: a fault of the whole volume names the destination, not the
/// temporary file that met it.
FileError interruptionOf(const FileError& error, const Folder& destination);

}  // namespace tavrix
