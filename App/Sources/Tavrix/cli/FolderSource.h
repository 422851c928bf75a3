#pragma once

#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "device/FolderCatalogue.h"
#include "media/SnapshotItem.h"

namespace tavrix::cli {

/// To be called before anything is written into the state folder: throws CommandFailure when it
/// lies in the source.
void checkStateFolder(const CommandContext& context);

/// The folder with the catalogue, of a call whose source is a folder that stands for a phone;
/// nothing when the source holds a snapshot, or is neither. Looked for once a call.
const std::optional<std::string>& cameraFolder(const CommandContext& context);

/// Its files with their metadata; a bar on a terminal tells how far reading is. What is left out is
/// told on standard error, and the folders that could not be read are counted in the call's
/// findings. Throws CommandFailure when an interrupt stopped it or the state folder lies in the
/// source, FileError.
std::vector<SnapshotItem> readFolder(const CommandContext& context, const std::string& folder);

/// Reads a catalogue by `read` with what its metadata pass takes from the call, and tells as
/// readFolder() does. `phoneKey` is what the cache goes by; `place` is for the log. Throws
/// CommandFailure when an interrupt stopped it, and what `read` throws.
std::vector<SnapshotItem> readWithMetadata(
    const CommandContext& context, const std::string& phoneKey, const std::string& place,
    const std::function<FolderCatalogue(MetadataPass::Setup, const std::stop_token&)>& read);

/// Tells on standard error what a reading left out, and counts the folders that could not be read
/// in the call's findings. `place` is for the log.
void tellReading(const CommandContext& context, const FolderCatalogue& catalogue,
                 const std::string& place);

/// The state folder of a call; nothing when the environment does not tell.
std::optional<std::string> stateFolder(const CommandContext& context);

}  // namespace tavrix::cli
