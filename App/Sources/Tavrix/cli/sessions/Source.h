#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/sessions/CommandContext.h"
#include "library/Library.h"
#include "media/SnapshotItem.h"

namespace tavrix::cli {

/// The source of a call, for commands that end with a sentence when it is not ready. PhoneSession
/// is for those that wait for their phone.

/// Returns the source that the call names; the same object at every call.
PictureSource& sourceOf(const CommandContext& context);

/// Reads the entries of the catalogue. Shows a progress bar on a terminal, reports on standard
/// error what is left out, and counts the folders that could not be read in the call's findings.
/// Throws CommandFailure.
std::vector<SnapshotItem> readItems(const CommandContext& context);
/// Reads the catalogue as readItems() does. If the environment asks for a snapshot, writes one.
/// Throws CommandFailure.
std::vector<MediaAsset> readCatalogue(const CommandContext& context);
/// Reads the catalogue and groups it into folders; `naming`, which may be null, names the places.
/// Throws CommandFailure, also for an unknown mode.
Library readLibrary(const CommandContext& context, PlaceNaming* naming = nullptr);
/// Reads the catalogue and returns the source as the model takes it. Throws CommandFailure.
ConnectedSource readSource(const CommandContext& context);

/// Throws DestinationError unless the destination and the source are apart.
void checkApart(const CommandContext& context, const std::string& destination);
/// Throws CommandFailure if a snapshot would be written into a card.
void checkCatalogueFolder(const CommandContext& context, const std::string& folder);
/// Throws CommandFailure if the state folder is inside the source. To be called before anything is
/// written to the state folder.
void checkStateFolder(const CommandContext& context);

/// If the environment asks for a snapshot, writes the entries there. Throws DestinationError,
/// FileError.
void keepSnapshot(const CommandContext& context, const std::vector<SnapshotItem>& items);

/// Returns the name that the call or the environment gives the phone.
std::optional<std::string> givenDeviceName(const CommandContext& context);
/// Returns the name of the phone, once the catalogue was read.
std::string deviceName(const CommandContext& context);
/// Returns the phone as destinations recognise it, once the catalogue was read.
PhoneIdentity phoneOf(const CommandContext& context);

/// Returns the phones of the call. Throws PhoneError (noService) if there are none.
PhoneBrowser& browserOf(const CommandContext& context);
/// Returns the state folder of the call, or nullopt if nothing names one.
std::optional<std::string> stateFolder(const CommandContext& context);
/// As stateFolder(). Throws CommandFailure with `status` if nothing names one.
std::string requiredStateFolder(const CommandContext& context,
                                ExitStatus status = ExitStatus::stopped);

/// Writes the entries as "snapshot.json" into a folder, which is created if only its last part is
/// missing. Returns the path of the file. Throws DestinationError, FileError.
std::string writeItems(const std::vector<SnapshotItem>& items, const std::string& folder);

}  // namespace tavrix::cli
