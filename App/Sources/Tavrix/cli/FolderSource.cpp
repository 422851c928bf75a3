#include "cli/FolderSource.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>

#include "Destination.h"
#include "cli/PhoneSentences.h"
#include "cli/PhoneSource.h"
#include "cli/Quotes.h"
#include "cli/ReadingBar.h"
#include "cli/Source.h"
#include "cli/SourceSentences.h"
#include "cli/StoredSettings.h"
#include "device/FolderCatalogue.h"

namespace tavrix::cli {
namespace {

using SourceFolder::Reason;
using ListSentence = Sentence<std::string, std::string>;

struct ReasonSentence {
  Reason reason;
  const ListSentence& sentence;
};
constexpr std::array<ReasonSentence, 8> reasonSentences{{
    {Reason::hidden, sentences::leftOutHidden},
    {Reason::placeholder, sentences::leftOutPlaceholder},
    {Reason::link, sentences::leftOutLink},
    {Reason::special, sentences::leftOutSpecial},
    {Reason::unreadableFolder, sentences::leftOutUnreadableFolder},
    {Reason::unreadableFile, sentences::leftOutUnreadableFile},
    {Reason::tooDeep, sentences::leftOutTooDeep},
    {Reason::vanished, sentences::leftOutVanished},
}};

/// "a, b, c and others".
std::string beginningOf(Language language, const std::vector<std::string>& paths) {
  constexpr std::size_t shown = 3;
  std::string text;
  for (std::size_t i = 0; i < std::min(shown, paths.size()); ++i) {
    text.append(i == 0 ? "" : ", ").append(cli::quoted(paths[i]));
  }
  if (paths.size() > shown) text += ' ' + say(language, sentences::andOthers);
  return text;
}

void tell(const CommandContext& context, const ListSentence& sentence,
          const std::vector<std::string>& paths) {
  if (paths.empty()) return;
  const Language language = context.language();
  context.surroundings.err.write(
      "tavrix: " +
      say(language, sentence, numberText(language, paths.size()), beginningOf(language, paths)) +
      '\n');
}

void tellLeftOut(const CommandContext& context, const FolderCatalogue& catalogue) {
  const bool isOnCable = isPhone(context.call.source());
  for (const auto& [reason, sentence] : reasonSentences) {
    std::vector<std::string> paths;
    for (const auto& leftOut : catalogue.leftOut) {
      if (leftOut.reason == reason) paths.push_back(leftOut.path);
    }
    const bool isRefused = isOnCable && reason == Reason::unreadableFolder;
    tell(context, isRefused ? sentences::phoneFoldersRefused : sentence, paths);
  }
  tell(context, isOnCable ? sentences::phoneFilesRefused : sentences::unreadableFiles,
       catalogue.unreadable);
}

/// Of two folders that differ by letter case alone, people take one for the other.
void tellOtherMediaFolders(const CommandContext& context, const std::string& folder) {
  const Language language = context.language();
  const std::string& source = context.call.source();
  if (folder == source) return;
  for (const std::string& other : SourceFolder::otherCatalogueFolders(source)) {
    context.surroundings.err.write(
        "tavrix: " +
        say(language, sentences::otherMediaFolder, cli::quoted(other), cli::quoted(folder)) + '\n');
  }
}

using ReadCatalogue =
    std::function<FolderCatalogue(MetadataPass::Setup, const std::stop_token& stop)>;

FolderCatalogue readWithBar(const CommandContext& context, const std::string& phoneKey,
                            const ReadCatalogue& read) {
  const Surroundings& surroundings = context.surroundings;
  MetadataPass::Setup setup{.phoneKey = phoneKey,
                            .directory = stateFolder(context),
                            .now = surroundings.now,
                            .log = &context.log};
  std::optional<ReadingBar> bar;
  if (surroundings.errColumns) {
    bar.emplace(surroundings.err, *surroundings.errColumns, context.language());
    setup.progress = [&](const MetadataPass::Progress& progress) {
      bar->show(progress, std::chrono::steady_clock::now());
    };
  }
  return read(std::move(setup), surroundings.catchInterrupts());
}

}  // namespace

std::optional<std::string> stateFolder(const CommandContext& context) {
  return stateFolderOf(context.surroundings.environment, context.call.stateFolder);
}

namespace {

std::optional<std::string> findCameraFolder(const std::string& source) {
  std::error_code error;
  const auto snapshot = std::filesystem::symlink_status(pathIn(source, "snapshot.json"), error);
  if (std::filesystem::exists(snapshot)) return std::nullopt;
  try {
    return SourceFolder::catalogueFolder(source);
  } catch (const FileError&) {
    // That it is missing or locked is told where the snapshot is looked for.
    return std::nullopt;
  }
}

/// What is kept of a source never lies in it.
void checkStateApart(const CommandContext& context, const std::string& folder) {
  const auto state = stateFolder(context);
  if (!state) return;
  const bool isInside =
      Destination::liesIn(*state, folder) ||
      // Of a home that is looked at as a phone, the usual place is a part.
      (context.call.stateFolder && Destination::liesIn(*state, context.call.source()));
  if (!isInside) return;
  throw CommandFailure{ExitStatus::usage,
                       say(context.language(), sentences::stateInSource, cli::quoted(*state))};
}

}  // namespace

const std::optional<std::string>& cameraFolder(const CommandContext& context) {
  auto& found = context.source.cameraFolder;
  if (!found) found.emplace(findCameraFolder(context.call.source()));
  return *found;
}

void checkStateFolder(const CommandContext& context) {
  if (isPhone(context.call.source())) return;
  if (const auto& folder = cameraFolder(context)) checkStateApart(context, *folder);
}

std::vector<SnapshotItem> readFolder(const CommandContext& context, const std::string& folder) {
  checkStateApart(context, folder);
  tellOtherMediaFolders(context, folder);
  return readWithMetadata(context, SourceFolder::phoneKey(folder), folder,
                          [&](MetadataPass::Setup setup, const std::stop_token& stop) {
                            return FolderCatalogue::read(folder, std::move(setup), stop);
                          });
}

std::vector<SnapshotItem> readWithMetadata(const CommandContext& context,
                                           const std::string& phoneKey, const std::string& place,
                                           const ReadCatalogue& read) {
  FolderCatalogue catalogue = readWithBar(context, phoneKey, read);
  if (!catalogue.isComplete) {
    throw CommandFailure{
        ExitStatus::cancelled,
        say(context.language(),
            catalogue.isKept ? sentences::readingStopped : sentences::readingStoppedUnkept)};
  }
  tellReading(context, catalogue, place);
  context.source.oddPaths = std::move(catalogue.oddPaths);
  return std::move(catalogue.items);
}

void tellReading(const CommandContext& context, const FolderCatalogue& catalogue,
                 const std::string& place) {
  tellLeftOut(context, catalogue);
  context.source.unreadFolders = catalogue.unreadFolders();
  writeLog(context.log, "folder read: items={}, left out={}, source={}", catalogue.items.size(),
           catalogue.leftOut.size(), PrivateField{place});
}

}  // namespace tavrix::cli
