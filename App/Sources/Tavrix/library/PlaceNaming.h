#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Settings.h"
#include "foundation/Log.h"
#include "foundation/files/Folder.h"
#include "media/AssetBundle.h"
#include "places/NamedCells.h"

namespace tavrix {

/// Finds the names of a library's places and keeps them in the cache of the state folder.
class PlaceNaming {
 public:
  /// `stateFolder` may be null: nothing is kept then.
  PlaceNaming(std::unique_ptr<const Geocoder> geocoder, std::unique_ptr<Folder> stateFolder,
              Log& log);

  /// The cells of some points by the settings' radius, with the names of all of them in Russian, in
  /// English and in each of the languages given. Returns when what can be found is found.
  std::shared_ptr<const PlaceLookup> name(const std::vector<GeoPoint>& points,
                                          const Settings& settings,
                                          const std::vector<std::string>& localeIDs);
  /// Finds names that were not there yet, in the same languages.
  void resolve(const std::vector<std::string>& placeKeys,
               const std::vector<std::string>& localeIDs);
  /// Writes the cache when anything was learnt. A failure is logged and does no harm.
  void save();

 private:
  std::unique_ptr<Folder> stateFolder_;
  Log& log_;
  std::shared_ptr<PlaceDirectory> directory_;
};

/// The positions of those shots that have one.
std::vector<GeoPoint> positionsOf(const std::vector<AssetBundle>& bundles);

/// The language that chosen places are compared in, besides Russian and English.
std::vector<std::string> languagesOf(const PlaceFilter& places);
/// The cells of all shots, which a choice of places is tested by; nothing when no places are chosen
/// or nothing names places (`naming` null, `geocodingEnabled` off).
std::shared_ptr<const PlaceLookup> lookupForFilter(const std::vector<AssetBundle>& bundles,
                                                   const Settings& settings, PlaceNaming* naming);

/// Groups with their names, and the lookup that named their places, if any did.
struct NamedGroups {
  std::vector<FolderNaming::Row> rows;
  std::shared_ptr<const PlaceLookup> places;
};
/// Names groups. Without a `lookup` the cells are those of the groups' places.
NamedGroups nameGroups(std::vector<MediaGroup> groups, const Settings& settings,
                       const std::string& systemLocaleID, PlaceNaming* naming,
                       std::shared_ptr<const PlaceLookup> lookup);

}  // namespace tavrix
