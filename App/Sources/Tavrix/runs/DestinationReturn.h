#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>

#include "foundation/Shared.h"
#include "runs/DestinationAccess.h"
#include "transfer/TransferPlan.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// A destination that a run writes to, with everything by which the run knows it again.
struct WrittenDestination {
  std::string path;
  std::string place;                       ///< its absolute path without links
  std::optional<FolderIdentity> identity;  ///< nullopt if the system reports none
  std::string markerName;                  ///< the file name of the run's marker
  Shared<TransferReport> report;           ///< so far
  bool isPacked = false;                   ///< paths in the report may lead into archives
  std::shared_ptr<const TransferPlan> plan;
};

/// The state of the folder at the path of a destination that failed.
struct DestinationLook {
  enum class State {
    there,  ///< the same folder, with every file that the run counts
    away,   ///< its volume is not there
    gone,   ///< the folder was removed or moved, another one has its place, or files are missing
  };
  State state = State::gone;
  std::optional<FolderIdentity> identity;  ///< if it is there; a share may get another one
};

/// Looks for a destination that failed. Takes as long as the volume takes to answer. Never throws.
///
/// Numbers of volumes are given again, so an identity alone proves nothing: the folder must have
/// every file that the run counts as copied or found, each plain copy with its size. A folder
/// with another identity must also have a file that this run has copied.
DestinationLook lookFor(const WrittenDestination& destination, const DestinationAccess& access);

/// Returns true if a destination fails in this way when its volume goes: by an error of a lost
/// volume, or because the folder is missing.
bool mayHaveLostVolume(const std::exception_ptr& failure);

}  // namespace tavrix
