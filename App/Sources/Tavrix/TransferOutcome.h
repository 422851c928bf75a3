#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/files/FileError.h"
#include "history/TransferRecord.h"
#include "transfer/TransferReport.h"

namespace tavrix {

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
  bool isPacked = false;  ///< the files were to lie in archives
  std::vector<UnpackedFolder> unpackedFolders;
  /// What a killed run had fetched to pack it and the phone has no more: it lies in plain folders
  /// now.
  std::vector<std::string> rescuedFiles;
  /// The destination could not be told what landed: the next run goes by the files alone.
  std::optional<FileError> markerFailure;
};

}  // namespace tavrix
