#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "foundation/Shared.h"
#include "library/Library.h"
#include "model/ConnectedSource.h"
#include "runs/Mounts.h"
#include "runs/RunFindings.h"
#include "runs/TransferOutcome.h"
#include "settings/SavedPreset.h"

namespace tavrix {

/// The fixed input of a run, and its result so far.
struct RunInProgress {
  enum class Stage {
    running,
    pausedForPhone,  ///< until the phone is back
    pausedForSpace,  ///< until the volume has room
    resuming,        ///< the destination is being opened again
    ending,          ///< the record is being written
    ended
  };

  Uuid id;
  Instant startedAt;
  Instant finishedAt;
  ConnectedSource source;
  std::string destination;
  std::optional<FolderIdentity> folder;    ///< which folder that is; no other is written to
  std::shared_ptr<const Library> library;  ///< with the chosen folders only
  std::shared_ptr<const Library> shown;    ///< with all folders
  Settings settings;
  Shared<std::vector<SavedPreset>> savedPresets;
  std::set<std::string, std::less<>> unchecked;  ///< ids of groups that the user left out
  std::shared_ptr<const TransferPlan> plan;
  RunFindings findings;  ///< about the destination, before the first byte
  std::uint64_t optimizedSkipped = 0;
  TransferOutcome outcome;  ///< of all legs
  Stage stage = Stage::running;
  bool isCancelled = false;
  std::exception_ptr failure;  ///< what ended the run, unless the outcome says it
};

}  // namespace tavrix
