#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/sessions/CommandContext.h"
#include "library/Library.h"
#include "media/SnapshotItem.h"

namespace tavrix::cli {

/// These functions read the source that the command line names. If a phone is not ready, they throw
/// CommandFailure with one sentence for the user; PhoneSession waits for the phone instead.

/// Returns the source that the command line names. Opens it on first use; `context.source` owns it.
PictureSource& sourceOf(const CommandContext& context);

/// Reads the entries of the catalogue. Shows a progress bar on a terminal, reports on standard
/// error what is left out, and stores the number of incompletely read folders in
/// `context.source.unreadFolders`. Throws CommandFailure, and FileError if a card cannot be listed.
std::vector<SnapshotItem> readItems(const CommandContext& context);
/// Reads the catalogue as readItems() does. If SNAPSHOT_OUT is set, also writes a snapshot there.
/// Throws as readItems() and writeRequestedSnapshot() do.
std::vector<MediaAsset> readCatalogue(const CommandContext& context);
/// Reads the catalogue and groups it into folders. Reports chosen places without shots on standard
/// error. If `naming` is null, places have no names. Throws as readCatalogue() does.
Library readLibrary(const CommandContext& context, PlaceNaming* naming = nullptr);
/// Reads the catalogue and returns the source as the model takes it. Throws as readCatalogue()
/// does.
ConnectedSource readSource(const CommandContext& context);

/// Throws DestinationError if copies would become part of the source (see
/// Destination::checkApart()), and FileError. Accepts every destination for a phone.
void checkApart(const CommandContext& context, const std::string& destination);
/// Throws CommandFailure if `folder`, into which a snapshot is to be written, is inside the source
/// or leads to the catalogue of the source.
void checkSnapshotFolder(const CommandContext& context, const std::string& folder);
/// Throws CommandFailure if the state folder is inside the camera folder (DCIM) of a card, or if it
/// was chosen with --state and is anywhere inside the card. The caller must call this before it
/// writes to the state folder.
void checkStateFolder(const CommandContext& context);

/// If SNAPSHOT_OUT is set, writes the entries into that folder, see writeItems(). Throws
/// DestinationError, FileError.
void writeRequestedSnapshot(const CommandContext& context, const std::vector<SnapshotItem>& items);

/// Returns the name that the call or the environment gives the phone, or nullopt if neither gives
/// one.
std::optional<std::string> givenDeviceName(const CommandContext& context);
/// Returns the name of the phone. Must be called after the catalogue was read.
std::string deviceName(const CommandContext& context);
/// Returns the phone as destinations recognise it. Must be called after the catalogue was read.
PhoneIdentity phoneOf(const CommandContext& context);

/// Returns the browser of the phones on the cable. Throws PhoneError (noService) if there is none.
PhoneBrowser& browserOf(const CommandContext& context);
/// Returns the state folder that the call or the environment gives, or nullopt if neither gives
/// one.
std::optional<std::string> stateFolder(const CommandContext& context);
/// As stateFolder(). Throws CommandFailure if neither gives one.
std::string requiredStateFolder(const CommandContext& context);

/// Writes the entries as "snapshot.json" into a folder, which is created if only its last part is
/// missing. Returns the path of the file. Throws DestinationError, FileError.
std::string writeItems(const std::vector<SnapshotItem>& items, const std::string& folder);

}  // namespace tavrix::cli
