#pragma once

#include <optional>
#include <string>

#include "model/AppModel.h"

namespace tavrix::window {

/// Returns the last picture among the files that the run under way has finished, or nullptr if
/// there is none. Looks at the last few files only.
const PlannedFile* lastLandedPicture(const AppModel& model);

/// Returns the absolute path at which the run under way has put the file of an asset, or nullopt if
/// it is not one of the last pictures. The file is not there if the run could not copy it, or put
/// it into an archive. Does not read the disk.
std::optional<std::string> landedPath(const AppModel& model, const MediaAsset& asset);

}  // namespace tavrix::window
