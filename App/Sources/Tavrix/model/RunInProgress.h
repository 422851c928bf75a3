#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Library.h"
#include "Mounts.h"
#include "RunFindings.h"
#include "SavedPreset.h"
#include "TransferOutcome.h"
#include "foundation/Shared.h"
#include "model/ConnectedSource.h"

namespace tavrix {

/// What a run was frozen with when it began, and what has come of it so far.
struct RunInProgress {
  enum class Stage {
    running,
    pausedForPhone,  ///< until the phone is back
    pausedForSpace,  ///< until the volume has room
    resuming,        ///< the destination is being opened anew
    ending,          ///< the record is being written
    ended
  };

  Uuid id;
  Instant startedAt;
  Instant finishedAt;
  ConnectedSource source;
  std::string destination;
  std::optional<FolderIdentity> folder;    ///< which one that is, so that no other is written to
  std::shared_ptr<const Library> library;  ///< with the chosen folders alone
  std::shared_ptr<const Library> shown;    ///< with all folders
  Settings settings;
  Shared<std::vector<SavedPreset>> savedPresets;
  std::set<std::string, std::less<>> unchecked;  ///< ids of groups that the person left out
  std::shared_ptr<const TransferPlan> plan;
  RunFindings findings;  ///< of the destination, before the first byte
  std::uint64_t optimizedSkipped = 0;
  TransferOutcome outcome;  ///< of all legs
  Stage stage = Stage::running;
  bool isCancelled = false;
  std::exception_ptr failure;  ///< what ended the run where the outcome does not tell
};

}  // namespace tavrix
