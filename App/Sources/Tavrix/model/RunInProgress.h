#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

#include "Library.h"
#include "Mounts.h"
#include "RunFindings.h"
#include "model/ConnectedSource.h"
#include "model/PhoneGate.h"
#include "model/TransferLeg.h"

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
  Settings settings;
  std::set<std::string, std::less<>> unchecked;  ///< ids of groups that are not part of the run
  std::shared_ptr<const TransferPlan> plan;
  RunFindings findings;  ///< of the destination, before the first byte
  std::uint64_t optimizedSkipped = 0;
  TransferOutcome outcome;  ///< of all legs
  Stage stage = Stage::running;
  bool isCancelled = false;
  /// How often the disk took nothing more although it had room, since a file landed.
  int refusals = 0;
  std::shared_ptr<TransferLeg> leg;  ///< in the hands of the transfer thread
  /// Where the leg waits for its phone.
  std::shared_ptr<PhoneGate> gate = std::make_shared<PhoneGate>();
  std::exception_ptr failure;  ///< what ended the run where the outcome does not tell
};

/// The latest progress of a leg, handed from its thread to the main loop.
struct ProgressSlot {
  std::mutex mutex;
  std::optional<TransferProgressSnapshot> latest;
  bool isPosted = false;
};

}  // namespace tavrix
