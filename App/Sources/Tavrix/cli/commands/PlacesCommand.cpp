// The commands on places, and what names the places of every command.

#include "PlaceSpelling.h"
#include "StateFolder.h"
#include "cli/ChosenPlaces.h"
#include "cli/Commands.h"
#include "cli/Failures.h"
#include "cli/FolderSource.h"
#include "cli/PlaceNames.h"
#include "cli/PlaceSentences.h"
#include "cli/Source.h"
#include "cli/SourceSentences.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "media/BundleBuilder.h"
#include "places/Gazetteer.h"

namespace tavrix::cli {
namespace {

std::string reasonOf(Language language, const GazetteerError& error) {
  using Kind = GazetteerError::Kind;
  switch (error.kind()) {
    case Kind::notGazetteer:
      return say(language, sentences::gazetteerNotOne, error.offset());
    case Kind::otherVersion:
      return say(language, sentences::gazetteerOtherVersion, error.offset());
    case Kind::wrongSize:
      return say(language, sentences::gazetteerWrongSize, error.offset());
    case Kind::wrongOrder:
      return say(language, sentences::gazetteerWrongOrder, error.offset());
  }
  return {};
}

/// Null, and told, when the table cannot be opened.
std::unique_ptr<const Geocoder> openGazetteer(const CommandContext& context,
                                              const std::string& path) {
  const Language language = context.language();
  std::string reason;
  try {
    return Gazetteer::open(path);
  } catch (const FileError& error) {
    reason = tavrix::sentences::systemErrorText(language, error.code());
  } catch (const GazetteerError& error) {
    reason = reasonOf(language, error);
  }
  context.surroundings.err.write(
      "tavrix: " + say(language, sentences::gazetteerUnreadable, printable(path), reason) + '\n');
  return nullptr;
}

/// Where the cache lies; null when there is no such folder and none can be made.
std::unique_ptr<Folder> cacheFolder(const CommandContext& context) {
  checkStateFolder(context);
  const auto path = stateFolder(context);
  if (!path) return nullptr;
  try {
    return openStateFolder(*path, "");
  } catch (const FileError& error) {
    writeLog(context.log, "place names not kept: path={}, code={}", PrivateField{error.path()},
             error.code());
    return nullptr;
  }
}

/// The lookup of all positions, also when no places are chosen.
std::shared_ptr<const PlaceLookup> lookupOf(const CommandContext& context,
                                            const std::vector<AssetBundle>& bundles,
                                            PlaceNaming* naming) {
  if (naming == nullptr) return nullptr;
  std::vector<std::string> localeIDs;
  if (context.settings.places) localeIDs = languagesOf(*context.settings.places);
  return naming->name(positionsOf(bundles), context.settings, localeIDs);
}

}  // namespace

std::unique_ptr<PlaceNaming> placeNaming(const CommandContext& context) {
  const auto& path = context.surroundings.gazetteerPath;
  if (!path || !context.settings.geocodingEnabled) return nullptr;
  auto gazetteer = openGazetteer(context, *path);
  if (!gazetteer) return nullptr;
  // A plan writes nothing at all.
  auto folder = context.call.command == Command::plan ? nullptr : cacheFolder(context);
  return std::make_unique<PlaceNaming>(std::move(gazetteer), std::move(folder), context.log);
}

ExitStatus listPlaces(const CommandContext& context) {
  const Settings& settings = context.settings;
  const auto bundles = BundleBuilder::makeBundles(readCatalogue(context));
  const auto naming = placeNaming(context);
  const auto lookup = lookupOf(context, bundles, naming.get());
  const Settings spelled = withPlacesSpelled(settings, bundles, lookup.get());
  const auto kept = filtered(bundles, bundleFilter(spelled), {settings.timeZone, lookup.get()});
  tellUnknownPlaces(context, bundles, lookup.get());
  PlacesResult result{placesOf(kept, settings.placeRadiusKm), std::nullopt};
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
  const auto path = stateFolder(context);
  if (!path) {
    throw CommandFailure{ExitStatus::stopped, say(context.language(), sentences::noStateFolder)};
  }
  context.printer.placeNamesReset(GeocodingCacheFile::reset(*openStateFolder(*path, "")));
  return ExitStatus::done;
}

}  // namespace tavrix::cli
