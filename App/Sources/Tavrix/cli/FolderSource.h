#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "media/SnapshotItem.h"

namespace tavrix::cli {

/// The folder with the catalogue, of a call whose source is a folder that stands for a phone;
/// nothing when the source holds a snapshot, or is neither. Looked for once a call.
const std::optional<std::string>& cameraFolder(const CommandContext& context);

/// Its files with their metadata; a bar on a terminal tells how far reading is. What is left out is
/// told on standard error, and the folders that could not be read are counted in the call's
/// findings. Throws CommandFailure when an interrupt stopped it or the state folder lies in the
/// source, FileError.
std::vector<SnapshotItem> readFolder(const CommandContext& context, const std::string& folder);

/// The state folder of a call; nothing when the environment does not tell.
std::optional<std::string> stateFolder(const CommandContext& context);

}  // namespace tavrix::cli
