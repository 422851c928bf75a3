#pragma once

#include <memory>

#include "RunRecording.h"
#include "cli/Commands.h"
#include "history/HistoryStore.h"

namespace tavrix::cli {

/// The history in the state folder of a call, with the folder that holds it.
class History {
 public:
  /// Creates the folder when it is missing. Throws CommandFailure when nothing tells where it is,
  /// and FileError.
  explicit History(const CommandContext& context);

  HistoryStore& store() { return store_; }

 private:
  std::unique_ptr<Folder> folder_;
  HistoryStore store_;
};

/// Where the state folder of a call is; nothing when nothing tells.
std::optional<std::string> statePath(const CommandContext& context);

/// Writes the record of a run that has ended; tells on standard error when that did not work.
/// Nothing when there is no record then.
std::optional<Uuid> recordRun(const CommandContext& context, RunToRecord run);

}  // namespace tavrix::cli
