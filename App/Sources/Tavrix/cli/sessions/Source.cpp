#include "cli/sessions/Source.h"

#include <chrono>
#include <filesystem>

#include "cli/printing/ReadingBar.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sessions/ChosenPlaces.h"
#include "cli/sessions/Failures.h"
#include "cli/sessions/ReadingReport.h"
#include "device/cable/DeviceWatch.h"
#include "foundation/Text.h"
#include "media/Snapshot.h"
#include "services/FailureText.h"
#include "sources/CardSource.h"
#include "sources/PhoneSource.h"
#include "sources/SnapshotSource.h"
#include "text/DeviceText.h"
#include "text/PhoneSentences.h"
#include "text/SentenceParts.h"
#include "text/SourceSentences.h"

namespace tavrix::cli {
namespace {

using SourceKind = PictureSource::Kind;

constexpr std::string_view snapshotName = "snapshot.json";

const CardSource& cardOf(const CommandContext& context) {
  return static_cast<const CardSource&>(sourceOf(context));
}

/// Reads the snapshot with `read`. Throws CommandFailure in place of its errors.
template <typename Read>
auto readSnapshot(const CommandContext& context, Read read) {
  auto& source = static_cast<SnapshotSource&>(sourceOf(context));
  try {
    auto entries = read(source);
    writeLog(context.log, "snapshot read: items={}, source={}", entries.size(),
             PrivateField{context.call.source()});
    return entries;
  } catch (const SnapshotError& error) {
    throw snapshotFailure(context.language(), source.snapshotPath(), error);
  } catch (const FileError& error) {
    throw CommandFailure{
        ExitStatus::stopped,
        sourceFailureText(context.language(), context.call.source(), source.snapshotPath(), error)};
  }
}

[[noreturn]] void failStopped(const CommandContext& context, bool isKept) {
  throw CommandFailure{ExitStatus::cancelled,
                       say(context.language(),
                           isKept ? sentences::readingStopped : sentences::readingStoppedUnkept)};
}

std::string obstacleOf(const CommandContext& context, const PhoneNotReady& reason) {
  const Language language = context.language();
  const std::string wanted = wantedNumber(context.call.source());
  std::string obstacle = obstacleText(language, reason.state());
  if (reason.state().is<DeviceState::Waiting>() && !wanted.empty()) {
    const auto& others = reason.others();
    obstacle = others.empty() ? say(language, sentences::phoneNotThere, forSentence(wanted))
                              : say(language, sentences::anotherPhone,
                                    forSentence(deviceNameOf(others.front())), forSentence(wanted));
  }
  return obstacle;
}

/// Reads a card or a phone, with a progress bar on a terminal.
FolderCatalogue readWithBar(const CommandContext& context) {
  const Surroundings& surroundings = context.surroundings;
  ReadingSetup reading{.zone = context.settings.gathering.timeZone,
                       .cacheDirectory = stateFolder(context),
                       .now = surroundings.now,
                       .log = &context.log,
                       .stop = surroundings.catchInterrupts()};
  std::optional<ReadingBar> bar;
  if (context.messages.showsProgress()) {
    bar.emplace(context.messages);
    reading.progress = [&](const MetadataPass::Progress& progress) {
      bar->show(progress, std::chrono::steady_clock::now());
    };
  }
  const auto& awaitPhone = context.source.awaitPhone;
  for (;;) {
    try {
      return sourceOf(context).readCatalogue(reading);
    } catch (const PhoneNotReady& reason) {
      const std::string obstacle = obstacleOf(context, reason);
      if (!reading.stop.stop_requested() && !awaitPhone) {
        bar.reset();
        throw CommandFailure{ExitStatus::stopped,
                             obstacle + say(context.language(), sentences::tryAgain)};
      }
      if (reading.stop.stop_requested() || !awaitPhone(obstacle)) {
        bar.reset();
        failStopped(context, reading.cacheDirectory.has_value());
      }
    }
  }
}

std::vector<SnapshotItem> readCardOrPhone(const CommandContext& context) {
  std::string sourceName = context.call.source();
  if (sourceOf(context).kind() == SourceKind::card) {
    checkStateFolder(context);
    sourceName = cardOf(context).cameraFolder();
    reportOtherMediaFolders(context, sourceName);
  }
  FolderCatalogue catalogue = readWithBar(context);
  if (!catalogue.isComplete) failStopped(context, catalogue.isKept);
  if (sourceOf(context).kind() == SourceKind::phone) {
    const auto& phone = static_cast<const PhoneSource&>(sourceOf(context));
    sourceName = phone.phone().deviceID;
    reportOtherPhones(context, phone.phone(), phone.others());
  }
  reportReading(context, catalogue, sourceName);
  return std::move(catalogue.items);
}

/// Returns true if a catalogue in `folder` would be inside the source, or would be the catalogue
/// that the source has.
bool isInSource(const CommandContext& context, const std::string& folder) {
  const auto liesIn = [&](const std::string& outer) { return Destination::liesIn(folder, outer); };
  switch (sourceOf(context).kind()) {
    case SourceKind::phone:
      return false;
    case SourceKind::card:
      return liesIn(context.call.source()) || liesIn(cardOf(context).cameraFolder());
    case SourceKind::snapshot:
      break;
  }
  const auto& snapshot = static_cast<const SnapshotSource&>(sourceOf(context));
  return liesIn(context.call.source()) || liesIn(snapshot.mediaFolder()) ||
         Destination::liesIn(pathIn(folder, snapshotName), snapshot.snapshotPath());
}

}  // namespace

PictureSource& sourceOf(const CommandContext& context) {
  auto& opened = context.source.source;
  if (!opened) opened = openPictureSource(context.call.source(), context.surroundings.phones);
  return *opened;
}

PhoneBrowser& browserOf(const CommandContext& context) {
  if (context.surroundings.phones == nullptr) throw PhoneError{PhoneError::Kind::noService};
  return *context.surroundings.phones;
}

std::optional<std::string> stateFolder(const CommandContext& context) {
  return stateFolderOf(context.surroundings.environment, context.call.stateFolder);
}

std::string requiredStateFolder(const CommandContext& context) {
  if (auto path = stateFolder(context)) return *std::move(path);
  throw CommandFailure{ExitStatus::stopped, say(context.language(), sentences::noStateFolder)};
}

std::optional<std::string> givenDeviceName(const CommandContext& context) {
  if (context.call.deviceName) return context.call.deviceName;
  return variable(context.surroundings.environment, "DEMO_DEVICE_NAME");
}

std::string deviceName(const CommandContext& context) {
  return sourceOf(context).nameOr(givenDeviceName(context));
}

PhoneIdentity phoneOf(const CommandContext& context) {
  return sourceOf(context).identity(givenDeviceName(context));
}

std::vector<SnapshotItem> readItems(const CommandContext& context) {
  if (sourceOf(context).kind() != SourceKind::snapshot) return readCardOrPhone(context);
  return readSnapshot(context,
                      [](SnapshotSource& source) { return source.readCatalogue({}).items; });
}

std::vector<MediaAsset> readCatalogue(const CommandContext& context) {
  const auto snapshotOut = variable(context.surroundings.environment, "SNAPSHOT_OUT");
  if (snapshotOut) checkSnapshotFolder(context, *snapshotOut);
  const TimeZone& zone = context.settings.gathering.timeZone;
  if (sourceOf(context).kind() != SourceKind::snapshot) {
    const auto items = readItems(context);
    writeRequestedSnapshot(context, items);
    return Snapshot::assetsOf(items, zone,
                              sourceOf(context).datesFromNames(context.settings.gathering));
  }
  auto assets = readSnapshot(
      context, [&](const SnapshotSource& source) { return source.readAssets({.zone = zone}); });
  if (snapshotOut) writeRequestedSnapshot(context, readItems(context));
  return assets;
}

Library readLibrary(const CommandContext& context, PlaceNaming* naming) {
  Library library =
      makeLibrary(readCatalogue(context), context.settings, context.surroundings.systemLocaleID,
                  context.call.explain || context.call.explainsAll, naming);
  tellUnknownPlaces(context, *library.bundles, library.places.get());
  return library;
}

ConnectedSource readSource(const CommandContext& context) {
  auto assets = readCatalogue(context);
  return connectedSource(sourceOf(context), std::move(assets), context.settings.gathering.timeZone,
                         context.source.unreadFolders, givenDeviceName(context));
}

void checkApart(const CommandContext& context, const std::string& destination) {
  // A phone has no files before it was read, and is apart from every folder.
  if (isPhone(context.call.source())) return;
  sourceOf(context).files()->checkDestination(destination);
}

void checkSnapshotFolder(const CommandContext& context, const std::string& folder) {
  if (!isInSource(context, folder)) return;
  throw CommandFailure{ExitStatus::usage,
                       say(context.language(), sentences::catalogueInSource, forSentence(folder))};
}

void checkStateFolder(const CommandContext& context) {
  if (isPhone(context.call.source()) || sourceOf(context).kind() != SourceKind::card) return;
  const auto state = stateFolder(context);
  if (!state) return;
  const bool isInside =
      Destination::liesIn(*state, cardOf(context).cameraFolder()) ||
      // If a home folder is read as a source, the default state folder is inside it.
      (context.call.stateFolder && Destination::liesIn(*state, context.call.source()));
  if (!isInside) return;
  throw CommandFailure{ExitStatus::usage,
                       say(context.language(), sentences::stateInSource, forSentence(*state))};
}

void writeRequestedSnapshot(const CommandContext& context, const std::vector<SnapshotItem>& items) {
  const auto folder = variable(context.surroundings.environment, "SNAPSHOT_OUT");
  if (folder) writeItems(items, *folder);
}

std::string writeItems(const std::vector<SnapshotItem>& items, const std::string& folder) {
  const auto opened = Destination::openOrCreate(folder);
  Snapshot::write(items, *opened, std::string{snapshotName});
  return pathIn(folder, snapshotName);
}

}  // namespace tavrix::cli
