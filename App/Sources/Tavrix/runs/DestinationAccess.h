#pragma once

#include <functional>
#include <memory>
#include <string>

#include "runs/Destination.h"
#include "runs/Mounts.h"

namespace tavrix {

using OpenFolder = std::function<std::unique_ptr<Folder>(const std::string&)>;
/// As isVolumeAway() of Mounts.h.
using IsVolumeAway = std::function<bool(const std::string&, const FolderIdentity&)>;

/// The ways to destinations and their volumes. The functions that open do what those of the same
/// names in Destination do.
struct DestinationAccess {
  OpenFolder openForWriting = Destination::openForWriting;
  OpenFolder openRequiredForWriting = Destination::openRequiredForWriting;
  OpenFolder openExisting = Destination::openExisting;
  IsVolumeAway isVolumeAway = tavrix::isVolumeAway;
};

}  // namespace tavrix
