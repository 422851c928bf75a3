#pragma once

#include <optional>
#include <string>

#include "foundation/files/Folder.h"
#include "runs/RunOutcome.h"
#include "transfer/FilesOnDisk.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// The hidden folder in a destination that contains the files of a run until they are packed. All
/// of them are copies of files on the phone. The run removes the folder at its end; after a killed
/// run the next run removes it.
namespace Staging {

/// Convert a path in the destination to the staged path, and back.
std::string stagedPath(const std::string& path);
std::string finalPath(const std::string& staged);

/// Returns the plan with all files moved to the staging folder.
TransferPlan staged(const TransferPlan& plan);

/// Moves a staged file to its place in the destination, under the first free number. If a file with
/// the same bytes is already there, removes the staged file instead. Returns the path. `sha256` is
/// the digest of the staged file. Throws FileError.
std::string moveOut(Folder& destination, const std::string& staged,
                    const std::optional<std::string>& sha256);

/// Removes the folder. Leaves to the next run what it cannot remove.
void removeQuietly(Folder& destination);

/// Removes the remains of a killed run. A file that this phone does not have, as far as the plan
/// shows (by name and size, or by planned path), is moved out instead. `listed` are the files in
/// the destination at planning time. Throws FileError.
StagingLeftOvers settleLeftOvers(Folder& destination, const FilesOnDisk& listed,
                                 const TransferPlan& plan);

}  // namespace Staging

}  // namespace tavrix
