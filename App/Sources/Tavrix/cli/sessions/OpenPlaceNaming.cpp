#include "cli/sessions/OpenPlaceNaming.h"

#include "cli/sentences/PlaceSentences.h"
#include "cli/sessions/Source.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "foundation/files/FileError.h"
#include "places/Gazetteer.h"
#include "settings/StateFolder.h"

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

/// Opens the table of places. If that fails, keeps the reason for the user and returns nullptr.
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
  context.source.placesFault =
      say(language, sentences::gazetteerUnreadable, printable(path), reason);
  return nullptr;
}

/// Opens the folder of the cache. Returns nullptr if it does not exist and cannot be created.
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

}  // namespace

std::unique_ptr<PlaceNaming> openPlaceNaming(const CommandContext& context, bool usesCache) {
  const auto& path = context.surroundings.gazetteerPath;
  if (!path || !context.settings.naming.geocodingEnabled) return nullptr;
  auto gazetteer = openGazetteer(context, *path);
  if (!gazetteer) return nullptr;
  auto folder = usesCache ? cacheFolder(context) : nullptr;
  return std::make_unique<PlaceNaming>(std::move(gazetteer), std::move(folder), context.log);
}

void tellPlacesFault(const CommandContext& context) {
  const auto fault = std::exchange(context.source.placesFault, std::nullopt);
  if (fault) context.warn(*fault);
}

}  // namespace tavrix::cli
