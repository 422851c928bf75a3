// The commands that show what is on the phone.

#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sessions/ChosenShots.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/OpenPlaceNaming.h"
#include "cli/sessions/SettingWarnings.h"
#include "cli/sessions/Source.h"
#include "cli/sessions/StoredSettings.h"
#include "grouping/GroupMerging.h"
#include "media/BundleBuilder.h"
#include "settings/PersistedSettings.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {

namespace {

/// Returns the name with `wholeFolderDates`, and the present one, of the first folder whose name
/// would change.
std::optional<std::pair<std::string, std::string>> shorterDate(const CommandContext& context,
                                                               const Library& library) {
  auto how = namingSettings(context.settings, context.surroundings.systemLocaleID);
  how.places = library.places;
  for (const FolderNaming::Row& row : library.rows) {
    if (!FolderNaming::isNamedLikeDay(how, *row.group)) continue;
    how.wholeFolderDates = true;
    return std::pair{FolderNaming::nameGroup(how, *row.group), row.name};
  }
  return std::nullopt;
}

void merge(Settings& settings, const std::vector<MergeSuggestion>& suggestions) {
  auto& merges = settings.gathering.mergesByMode[std::string{textOf(settings.gathering.uiMode)}];
  for (const MergeSuggestion& each : suggestions) {
    merges = GroupMerging::merging(merges, each.groupIDs);
  }
}

/// Keeps the suggested merges for all later calls.
void keepMerges(const CommandContext& context, const std::vector<MergeSuggestion>& suggestions) {
  const auto before = PersistedSettings::read(changeableDefaults(context), {});
  auto after = before;
  after.settings.gathering.uiMode = context.settings.gathering.uiMode;
  merge(after.settings, suggestions);
  after.settings.gathering.uiMode = before.settings.gathering.uiMode;
  keep(context, PersistedSettings::changes(before, after));
}

}  // namespace

ExitStatus listCatalog(const CommandContext& context) {
  context.printer.catalog(readCatalogue(context));
  return ExitStatus::done;
}

ExitStatus listBundles(const CommandContext& context) {
  context.printer.bundles(BundleBuilder::makeBundles(readCatalogue(context)));
  return ExitStatus::done;
}

ExitStatus listGroups(const CommandContext& context) {
  choiceOf(context);  // a mistake is reported before the source is read
  const auto naming = openPlaceNaming(context);
  Library library = readLibrary(context, naming.get());
  std::optional<std::size_t> accepted;
  if (context.call.acceptsSuggestions) {
    accepted = library.suggestions.size();
    if (*accepted > 0) keepMerges(context, library.suggestions);
    Settings settings = context.settings;
    merge(settings, library.suggestions);
    library =
        makeLibrary(library.bundles, library.fileCount, settings,
                    context.surroundings.systemLocaleID, library.reasons.has_value(), naming.get());
  }
  if (naming) naming->save();
  tellIdleSettings(context, library.rows);
  auto folders = foldersOf(library.rows);
  GroupsResult result{chosenPart(context, std::move(library), std::move(folders)).library,
                      context.settings.gathering.uiMode == UIGroupingMode::flat,
                      sourceOf(context).kind() == PictureSource::Kind::card,
                      context.call.explainsAll};
  result.accepted = accepted;
  result.shorterDate = shorterDate(context, result.library);
  context.printer.groups(result);
  return ExitStatus::done;
}

ExitStatus writeSnapshot(const CommandContext& context) {
  checkSnapshotFolder(context, context.call.operands.at(1));
  const auto items = readItems(context);
  const std::string path = writeItems(items, context.call.operands.at(1));
  context.printer.snapshotWritten(path, items.size());
  return ExitStatus::done;
}

}  // namespace tavrix::cli
