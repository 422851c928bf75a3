#pragma once

#include <optional>
#include <string>

#include "TransferOutcome.h"
#include "foundation/files/Folder.h"
#include "transfer/KnownAssets.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// The hidden folder in a destination that holds the files of a run until they are packed. All in
/// it are copies of what the phone holds: it goes with the run, and what a killed run left of it
/// with the next one.
namespace Staging {

/// A path of the destination within the staging folder, and back.
std::string stagedPath(const std::string& path);
std::string finalPath(const std::string& staged);

/// The plan with all its files in the staging folder.
TransferPlan staged(const TransferPlan& plan);

/// Gives a staged file its place in the destination, under the first number that is free. Where a
/// file with the same bytes lies already, the staged one goes and that one is the place. Gives the
/// path. `sha256` is that of the staged file. Throws FileError.
std::string moveOut(Folder& destination, const std::string& staged,
                    const std::optional<std::string>& sha256);

/// Removes the folder; what cannot be removed is left to the next run.
void removeQuietly(Folder& destination);

/// Clears away what a killed run left. Should this phone not hold one of its files, as far as the
/// plan knows (by name and size, or by its planned path), the file is moved out instead of being
/// removed. `listed` are the files that lay in the destination when the plan was made. Throws
/// FileError.
StagingLeftOvers settleLeftOvers(Folder& destination, const FilesOnDisk& listed,
                                 const TransferPlan& plan);

}  // namespace Staging

}  // namespace tavrix
