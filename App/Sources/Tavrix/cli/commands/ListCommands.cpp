// The commands that show what is on the phone.

#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sessions/ChosenShots.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/OpenPlaceNaming.h"
#include "cli/sessions/SettingWarnings.h"
#include "cli/sessions/Source.h"
#include "media/BundleBuilder.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
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
  if (naming) naming->save();
  tellIdleSettings(context, library.rows);
  auto folders = foldersOf(library.rows);
  context.printer.groups({chosenPart(context, std::move(library), std::move(folders)).library,
                          context.settings.gathering.uiMode == UIGroupingMode::flat,
                          sourceOf(context).kind() == PictureSource::Kind::card});
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
