// The commands that show what is on the phone.

#include "cli/Commands.h"
#include "cli/Source.h"
#include "media/BundleBuilder.h"

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
  context.printer.groups(readLibrary(context));
  return ExitStatus::done;
}

ExitStatus listPlaces(const CommandContext& context) {
  const auto bundles = BundleBuilder::makeBundles(readCatalogue(context));
  const auto kept =
      filtered(bundles, bundleFilter(context.settings), {context.settings.timeZone, nullptr});
  context.printer.places(placesOf(kept, context.settings.placeRadiusKm));
  return ExitStatus::done;
}

ExitStatus writeSnapshot(const CommandContext& context) {
  checkCatalogueFolder(context, context.call.operands.at(1));
  const auto items = readItems(context);
  const std::string path = writeItems(items, context.call.operands.at(1));
  context.printer.snapshotWritten(path, items.size());
  return ExitStatus::done;
}

}  // namespace tavrix::cli
