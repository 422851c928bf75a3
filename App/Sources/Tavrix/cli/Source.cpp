#include "cli/Source.h"

#include <filesystem>

#include "Destination.h"
#include "cli/ChosenPlaces.h"
#include "cli/CliSentences.h"
#include "cli/Failures.h"
#include "cli/FolderSource.h"
#include "cli/PhoneSource.h"
#include "cli/Quotes.h"
#include "cli/SourceSentences.h"
#include "device/FolderMediaSource.h"
#include "foundation/Text.h"
#include "foundation/files/FileReader.h"
#include "media/LocalMediaSource.h"
#include "media/Snapshot.h"
#include "model/FollowedDevice.h"

namespace tavrix::cli {
namespace {

constexpr std::string_view snapshotName = "snapshot.json";

/// Reads the snapshot by `read`, and its errors become those of the command.
template <typename Read>
auto readSnapshot(const CommandContext& context, Read read) {
  const std::string path = pathIn(context.call.source(), snapshotName);
  try {
    return read(*openFileForReading(path));
  } catch (const SnapshotError& error) {
    throw snapshotFailure(context.language(), path, error);
  } catch (const FileError& error) {
    throw snapshotFailure(context.language(), path, error);
  }
}

}  // namespace

std::string pathIn(const std::string& folder, std::string_view name) {
  std::string path = folder;
  if (!path.ends_with('/')) path += '/';
  return path.append(name);
}

std::string mediaFolder(const CommandContext& context) {
  return pathIn(context.call.source(), "media");
}

void checkMedia(const CommandContext& context) {
  if (isPhone(context.call.source()) || cameraFolder(context)) return;
  std::error_code error;
  if (std::filesystem::is_directory(mediaFolder(context), error)) return;
  throw CommandFailure{ExitStatus::stopped, say(context.language(), sentences::mediaMissing,
                                                printable(mediaFolder(context)))};
}

std::optional<std::string> givenDeviceName(const CommandContext& context) {
  if (context.call.deviceName) return context.call.deviceName;
  return variable(context.surroundings.environment, "DEMO_DEVICE_NAME");
}

std::string deviceName(const CommandContext& context) {
  if (const auto name = givenDeviceName(context)) return *name;
  const bool isOnCable = isPhone(context.call.source());
  return isOnCable ? chosenPhone(context).name.value_or("iPhone") : "iPhone";
}

PhoneIdentity phoneOf(const CommandContext& context) {
  if (isPhone(context.call.source())) {
    return identityOf(chosenPhone(context), deviceName(context));
  }
  const bool isNamed = givenDeviceName(context).has_value();
  const auto& folder = cameraFolder(context);
  return folder && !isNamed ? folderPhone(*folder, deviceName(context))
                            : snapshotPhone(deviceName(context));
}

std::unique_ptr<MediaSource> openMedia(const CommandContext& context) {
  if (isPhone(context.call.source())) return openPhone(context);
  if (const auto& folder = cameraFolder(context))
    return std::make_unique<FolderMediaSource>(*folder, context.source.oddPaths);
  return std::make_unique<LocalMediaSource>(mediaFolder(context));
}

bool isCard(const CommandContext& context) {
  return !isPhone(context.call.source()) && cameraFolder(context).has_value();
}

ConnectedSource connectedSource(const CommandContext& context) {
  auto assets = readCatalogue(context);
  return {.deviceName = deviceName(context),
          .phone = phoneOf(context),
          .assets = std::move(assets),
          .unreadFolders = context.source.unreadFolders,
          .isCard = isCard(context),
          .openMedia = [&context](const AwaitPhone&,
                                  const std::stop_token&) { return openMedia(context); },
          .checkDestination =
              [&context](const std::string& destination) { checkApart(context, destination); },
          .checkMedia = [&context] { checkMedia(context); }};
}

void checkApart(const CommandContext& context, const std::string& destination) {
  if (isPhone(context.call.source())) return;
  if (const auto& folder = cameraFolder(context)) {
    Destination::checkApartFromFolder(context.call.source(), *folder, destination);
  } else {
    Destination::checkApart(context.call.source(), destination);
  }
}

void checkCatalogueFolder(const CommandContext& context, const std::string& folder) {
  if (isPhone(context.call.source())) return;
  const auto& camera = cameraFolder(context);
  if (!camera) return;
  const bool isInside =
      Destination::liesIn(folder, context.call.source()) || Destination::liesIn(folder, *camera);
  if (!isInside) return;
  throw CommandFailure{ExitStatus::usage,
                       say(context.language(), sentences::catalogueInSource, cli::quoted(folder))};
}

std::vector<SnapshotItem> readItems(const CommandContext& context) {
  if (isPhone(context.call.source())) return readPhone(context);
  if (const auto& folder = cameraFolder(context)) return readFolder(context, *folder);
  auto items = readSnapshot(context, [](ByteReader& file) { return Snapshot::read(file); });
  writeLog(context.log, "snapshot read: items={}, source={}", items.size(),
           PrivateField{context.call.source()});
  return items;
}

std::vector<MediaAsset> readCatalogue(const CommandContext& context) {
  const auto snapshotOut = variable(context.surroundings.environment, "SNAPSHOT_OUT");
  if (snapshotOut) checkCatalogueFolder(context, *snapshotOut);
  if (isPhone(context.call.source()) || cameraFolder(context)) {
    const auto items = readItems(context);
    keepSnapshot(context, items);
    return Snapshot::assetsOf(items, context.settings.timeZone);
  }
  auto assets = readSnapshot(context, [&](ByteReader& file) {
    return Snapshot::readAssets(file, context.settings.timeZone);
  });
  writeLog(context.log, "snapshot read: items={}, source={}", assets.size(),
           PrivateField{context.call.source()});
  if (snapshotOut) keepSnapshot(context, readItems(context));
  return assets;
}

void keepSnapshot(const CommandContext& context, const std::vector<SnapshotItem>& items) {
  const auto folder = variable(context.surroundings.environment, "SNAPSHOT_OUT");
  if (folder) writeItems(items, *folder);
}

Library readLibrary(const CommandContext& context, PlaceNaming* naming) {
  Library library = makeLibrary(readCatalogue(context), context.settings,
                                context.surroundings.systemLocaleID, context.call.explain, naming);
  tellUnknownPlaces(context, library.bundles, library.places.get());
  return library;
}

std::string writeItems(const std::vector<SnapshotItem>& items, const std::string& folder) {
  const auto opened = Destination::openOrCreate(folder);
  Snapshot::write(items, *opened, std::string{snapshotName});
  return pathIn(folder, snapshotName);
}

}  // namespace tavrix::cli
