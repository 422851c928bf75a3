#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Destination.h"
#include "Library.h"
#include "cli/Commands.h"
#include "media/MediaSource.h"
#include "media/SnapshotItem.h"
#include "model/ConnectedSource.h"

namespace tavrix::cli {

/// The source of a call: a folder that holds snapshot.json and media, one that stands for a phone
/// (cli/FolderSource.h), or a phone on the cable (cli/PhoneSource.h).

/// Its catalogue. Where the environment asks for it, the catalogue is written there, too. Throws
/// CommandFailure.
std::vector<MediaAsset> readCatalogue(const CommandContext& context);
/// Its entries: as they stand in the file, or as the folder's files tell. Throws CommandFailure.
std::vector<SnapshotItem> readItems(const CommandContext& context);
/// The folder with the files of a snapshot; not checked.
std::string mediaFolder(const CommandContext& context);
/// Where the bytes of its catalogue come from, which was read before. Throws FileError.
std::unique_ptr<MediaSource> openMedia(const CommandContext& context);
/// Throws DestinationError unless the destination and the source lie apart.
void checkApart(const CommandContext& context, const std::string& destination);

/// A folder that stands for a phone is never written to: throws CommandFailure when a catalogue's
/// folder lies in it.
void checkCatalogueFolder(const CommandContext& context, const std::string& folder);

/// Writes the entries where the environment asks for the catalogue. Throws DestinationError,
/// FileError.
void keepSnapshot(const CommandContext& context, const std::vector<SnapshotItem>& items);

/// The name that the call, or the environment, gives the phone.
std::optional<std::string> givenDeviceName(const CommandContext& context);
/// The phone's name (the call's, the environment's, or "iPhone"), and the phone as destinations
/// remember it.
std::string deviceName(const CommandContext& context);
PhoneIdentity phoneOf(const CommandContext& context);

/// The source with its catalogue read, for the application model. What it refers to is the
/// context's. Throws CommandFailure.
ConnectedSource connectedSource(const CommandContext& context);

/// Whether it is a folder that stands for a phone.
bool isCard(const CommandContext& context);

/// Throws CommandFailure when a snapshot's folder of files is not there.
void checkMedia(const CommandContext& context);

/// The catalogue in folders, whose places `naming` names, if there is one. Throws CommandFailure,
/// also for a mode that is not there.
Library readLibrary(const CommandContext& context, PlaceNaming* naming = nullptr);

/// Writes the entries as "snapshot.json" into a folder, which is created when only its last part is
/// missing; gives the file's path. Throws DestinationError, FileError.
std::string writeItems(const std::vector<SnapshotItem>& items, const std::string& folder);

/// "DIR/NAME", without a second "/" where there is one.
std::string pathIn(const std::string& folder, std::string_view name);

}  // namespace tavrix::cli
