// The commands for places.

#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/PlaceSentences.h"
#include "cli/sessions/ChosenPlaces.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/Failures.h"
#include "cli/sessions/OpenPlaceNaming.h"
#include "cli/sessions/Source.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "library/PlaceSpelling.h"
#include "media/BundleBuilder.h"
#include "places/GeocodingCache.h"
#include "settings/StateFolder.h"
#include "text/SourceSentences.h"

namespace tavrix::cli {

ExitStatus listPlaces(const CommandContext& context) {
  const Settings& settings = context.settings;
  const Shared<std::vector<AssetBundle>> shots = BundleBuilder::makeBundles(readCatalogue(context));
  const std::vector<AssetBundle>& bundles = *shots;
  const auto naming = openPlaceNaming(context);
  const auto lookup = lookupOf(shots, settings, context.surroundings.systemLocaleID, naming.get());
  const Settings spelled = withPlacesSpelled(settings, bundles, lookup.get());
  const auto kept = filtered(bundles, bundleFilter(spelled),
                             {groupingSettings(settings, naming.get()).clock(), lookup.get()});
  tellUnknownPlaces(context, bundles, lookup.get());
  PlacesResult result{placesOf(kept, settings.gathering.placeRadiusKm), std::nullopt};
  if (lookup) {
    addNames(result.places, settings, *naming);
    result.tree =
        placeTree(kept, lookup.get(), context.language() == Language::russian ? "ru_RU" : "en_US");
    naming->save();
  }
  context.printer.places(result);
  return ExitStatus::done;
}

ExitStatus resetPlaceNames(const CommandContext& context) {
  const auto folder = openStateFolder(requiredStateFolder(context), "");
  context.printer.placeNamesReset(GeocodingCacheFile::reset(*folder));
  return ExitStatus::done;
}

}  // namespace tavrix::cli
