#pragma once

#include <cstdint>

#include "transfer/DestinationMarker.h"
#include "transfer/FilesOnDisk.h"

namespace tavrix {

/// The unfinished files of killed transfers.
namespace LeftParts {

/// Removes the ".part" files of the paths that records of the destination claim and never settled.
/// `listed` and `marker` are the content of the destination from before the next run. Does nothing
/// unless the folder is locked: then no transfer is running, and all claims are of killed ones.
/// Other ".part" files stay, and so does a file that cannot be removed. Returns the number of
/// removed files.
std::uint64_t remove(Folder& destination, const FilesOnDisk& listed,
                     const DestinationMarker::Marker& marker);

}  // namespace LeftParts

}  // namespace tavrix
