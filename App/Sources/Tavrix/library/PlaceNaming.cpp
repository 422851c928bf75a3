#include "library/PlaceNaming.h"

#include "foundation/files/FileError.h"
#include "naming/NameRendering.h"
#include "places/GeocodedZones.h"
#include "places/NamedCells.h"

namespace tavrix {
namespace {

const std::vector<std::string> bothLanguages{"ru_RU", "en_US"};

GeocodingCache loadCache(const Folder* folder, const std::string& source) {
  return folder == nullptr ? GeocodingCache{source, {}} : GeocodingCacheFile::load(*folder, source);
}

std::vector<GeoPoint> positionsOf(const std::vector<MediaGroup>& groups) {
  std::vector<GeoPoint> points;
  for (const MediaGroup& group : groups) {
    const auto positions = tavrix::positionsOf(group.bundles);
    points.insert(points.end(), positions.begin(), positions.end());
  }
  return points;
}

std::string localeOf(const Settings& settings, const std::string& systemLocaleID) {
  return NameRendering::localeID(settings.naming.nameTemplate.language, systemLocaleID);
}

}  // namespace

PlaceNaming::PlaceNaming(std::unique_ptr<const Geocoder> geocoder,
                         std::unique_ptr<Folder> stateFolder, Log& log)
    : stateFolder_(std::move(stateFolder)), log_(log) {
  GeocodingCache cache = loadCache(stateFolder_.get(), geocoder->source());
  directory_ = std::make_shared<PlaceDirectory>(std::move(geocoder), std::move(cache));
  zones_ = std::make_shared<GeocodedZones>(directory_);
  districts_ = std::make_shared<GeocodedDistricts>(directory_);
}

std::shared_ptr<const PlaceLookup> PlaceNaming::name(const std::vector<GeoPoint>& points,
                                                     const Settings& settings,
                                                     const std::vector<std::string>& localeIDs) {
  return name(std::make_shared<const PlaceCells>(points, settings.gathering.placeRadiusKm,
                                                 directory_->borders()),
              settings, localeIDs);
}

std::shared_ptr<const PlaceLookup> PlaceNaming::name(
    const Shared<std::vector<AssetBundle>>& bundles, const Settings& settings,
    const std::vector<std::string>& localeIDs) {
  return name(cellsOf(bundles, settings.gathering.placeRadiusKm), settings, localeIDs);
}

std::shared_ptr<const PlaceLookup> PlaceNaming::name(std::shared_ptr<const PlaceCells> cells,
                                                     const Settings& settings,
                                                     const std::vector<std::string>& localeIDs) {
  resolve(cells->pointKeys(), localeIDs);
  return std::make_shared<NamedCells>(std::move(cells), directory_, settings.naming.mergeDistricts,
                                      districts_);
}

std::shared_ptr<const PlaceCells> PlaceNaming::cellsOf(
    const Shared<std::vector<AssetBundle>>& bundles, double radiusKm) {
  const std::lock_guard lock{mutex_};
  if (!last_.cells || !isSame(last_.bundles, bundles) || last_.radiusKm != radiusKm) {
    last_ = {
        bundles, radiusKm,
        std::make_shared<const PlaceCells>(positionsOf(*bundles), radiusKm, directory_->borders())};
  }
  return last_.cells;
}

void PlaceNaming::resolve(const std::vector<std::string>& placeKeys,
                          const std::vector<std::string>& localeIDs) {
  for (const std::string& localeID : bothLanguages) directory_->request(placeKeys, localeID);
  for (const std::string& localeID : localeIDs) directory_->request(placeKeys, localeID);
  directory_->wait();
}

void PlaceNaming::save() {
  if (stateFolder_ == nullptr || !directory_->hasLearnt()) return;
  try {
    if (!GeocodingCacheFile::save(*stateFolder_, directory_->cache())) {
      writeLog(log_, "place names not kept: the state folder is in use");
    }
  } catch (const FileError& error) {
    writeLog(log_, "place names not kept: path={}, code={}", PrivateField{error.path()},
             error.code());
  }
}

std::vector<GeoPoint> positionsOf(const std::vector<AssetBundle>& bundles) {
  std::vector<GeoPoint> points;
  for (const AssetBundle& bundle : bundles) {
    if (const auto position = bundle.position()) points.push_back(*position);
  }
  return points;
}

std::shared_ptr<const PlaceLookup> lookupOf(const Shared<std::vector<AssetBundle>>& bundles,
                                            const Settings& settings,
                                            const std::string& systemLocaleID,
                                            PlaceNaming* naming) {
  if (naming == nullptr || !settings.naming.geocodingEnabled) return nullptr;
  std::vector<std::string> localeIDs{localeOf(settings, systemLocaleID)};
  const auto& places = settings.content.places;
  if (places && !places->localeID.empty()) localeIDs.push_back(places->localeID);
  return naming->name(bundles, settings, localeIDs);
}

GroupingSettings groupingSettings(const Settings& settings, const PlaceNaming* naming) {
  GroupingSettings result = groupingSettings(settings);
  if (naming != nullptr) result.placeZones = naming->zones();
  return result;
}

NamedGroups nameGroups(std::vector<MediaGroup> groups, const Settings& settings,
                       const std::string& systemLocaleID, PlaceNaming* naming,
                       std::shared_ptr<const PlaceLookup> lookup) {
  FolderNaming::Settings how = namingSettings(settings, systemLocaleID);
  const bool isNaming = naming != nullptr && settings.naming.geocodingEnabled;
  const std::vector<std::string> localeIDs{localeOf(settings, systemLocaleID)};
  if (isNaming && !lookup) lookup = naming->name(positionsOf(groups), settings, localeIDs);
  how.places = lookup;
  const std::vector<Shared<MediaGroup>> shared{std::make_move_iterator(groups.begin()),
                                               std::make_move_iterator(groups.end())};
  auto result = FolderNaming::resolve(how, shared);
  if (isNaming && !result.unresolvedPlaces.empty()) {
    std::vector<std::string> keys;
    for (const GeoPoint& point : result.unresolvedPlaces) keys.push_back(lookup->placeKey(point));
    naming->resolve(keys, localeIDs);
    result = FolderNaming::resolve(how, shared);
  }
  return {std::move(result.rows), std::move(lookup)};
}

}  // namespace tavrix
