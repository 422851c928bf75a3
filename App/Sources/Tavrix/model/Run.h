#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "foundation/Shared.h"
#include "library/Choice.h"
#include "library/Library.h"
#include "model/AppState.h"
#include "model/ConnectedSource.h"
#include "runs/DestinationFindings.h"
#include "runs/Mounts.h"
#include "runs/RunOutcome.h"
#include "settings/SavedPreset.h"

namespace tavrix {

/// The stage of a run. While it copies, an attempt is under way.
namespace run_stage {
struct Copying {};
/// The user has cancelled, and the attempt is ending.
struct Cancelling {};
/// Until the phone is back, and the folders are displayed again.
struct AwaitingPhone {
  bool isBack = false;  ///< the phone is back, the folders are not
};
/// Until the volume has room.
struct AwaitingSpace {};
/// Until the volume of the destination is back.
struct AwaitingDestination {
  std::exception_ptr failure;  ///< of the destination
  bool wasAway = false;
  int looksAtDamage = 0;  ///< that found a disk in its place after it had failed
};
/// The destination is being opened again.
struct Reopening {
  bool isUnderWay = true;  ///< false between two attempts while another run holds it
};
/// The record is being written.
struct Recording {};
struct Ended {};
}  // namespace run_stage
using RunStage = std::variant<run_stage::Copying, run_stage::Cancelling, run_stage::AwaitingPhone,
                              run_stage::AwaitingSpace, run_stage::AwaitingDestination,
                              run_stage::Reopening, run_stage::Recording, run_stage::Ended>;

/// The sums over the plan of a run.
struct RunTotals {
  std::uint64_t bytes = 0;
  std::uint64_t conversions = 0;
  Shared<std::vector<TransferFolder>> folders;  ///< those with files to transfer
};

/// Returns the sums. `rows` are the rows from which the plan was made.
RunTotals totalsOf(const std::vector<FolderNaming::Row>& rows, const TransferPlan& plan);

/// The fixed input of a run, and its result so far. Copying it copies little more than pointers.
struct Run {
  using GroupIDs = std::set<std::string, std::less<>>;

  Uuid id;
  Instant startedAt;
  Instant finishedAt;
  ConnectedSource source;
  std::string destination;
  std::optional<FolderIdentity> folder;    ///< which folder that is; no other is written to
  std::string place;                       ///< its absolute path without links
  std::shared_ptr<const Library> library;  ///< with the chosen folders only
  std::shared_ptr<const Library> shown;    ///< with all folders
  Shared<Settings> settings;
  Shared<std::vector<SavedPreset>> savedPresets;
  Shared<GroupIDs> unchecked;                ///< groups that the user left out
  std::shared_ptr<const Choosing> choosing;  ///< which shots the run is about; nullptr: all
  std::shared_ptr<const TransferPlan> plan;
  Shared<std::vector<DestinationMarker::FolderNote>> notes;  ///< how its folders got their names
  RunTotals totals;
  DestinationFindings findings;  ///< about the destination, before the first byte
  std::uint64_t optimizedSkipped = 0;
  RunOutcome outcome;           ///< of all attempts
  std::uint64_t converted = 0;  ///< the files that the attempts so far have converted
  RunStage stage;
  std::exception_ptr failure;  ///< what ended the run, unless the outcome says it

  template <typename Stage>
  bool is() const {
    return std::holds_alternative<Stage>(stage);
  }
};

}  // namespace tavrix
