#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>

#include "foundation/Shared.h"
#include "foundation/Time.h"
#include "runs/DestinationAccess.h"
#include "transfer/TransferPlan.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// A destination that a run writes to, with everything by which the run knows it again.
struct WrittenDestination {
  std::string path;
  std::string place;                       ///< its absolute path without links
  std::optional<FolderIdentity> identity;  ///< nullopt if the system reports none
  std::string phoneHash;                   ///< of the phone that the run copies from
  Instant startedAt;                       ///< when the run began
  Shared<TransferReport> report;           ///< so far
  bool isPacked = false;                   ///< paths in the report may lead into archives
  std::shared_ptr<const TransferPlan> plan;
};

/// The state of the folder at the path of a destination that failed.
struct DestinationLook {
  enum class State {
    there,    ///< the same folder, with every file that the run counts
    away,     ///< its volume is not there
    failing,  ///< its volume is there and cannot be read
    changed,  ///< files are missing, or it cannot be told from another folder
    gone,     ///< the folder was removed or moved
  };
  State state = State::gone;
  std::optional<FolderIdentity> identity;  ///< if it is there; a volume may get another one
};

/// Looks for a destination that failed. Takes as long as the volume takes to answer. Never throws.
///
/// Numbers of volumes and folders are given again, and some volumes get others at each mount, so an
/// identity proves nothing. The folder must have every file that the run counts as copied or found,
/// each plain copy with its size, and a trace of the run: its record, or its staged files. The
/// identity is enough if the run has copied nothing yet.
DestinationLook lookFor(const WrittenDestination& destination, const DestinationAccess& access);

/// Returns true if a destination fails in this way when its volume goes: by an error of a lost
/// volume, because the volume became read-only, or because the folder is missing.
bool mayHaveLostVolume(const std::exception_ptr& failure);
/// Returns true for an error of a damaged disk, which a pulled one may cause, too.
bool isDiskError(const std::exception_ptr& failure);

}  // namespace tavrix
