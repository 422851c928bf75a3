#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Log.h"
#include "foundation/files/Folder.h"
#include "media/AssetBundle.h"
#include "places/NamedCells.h"
#include "settings/Settings.h"

namespace tavrix {

/// Finds the names of a library's places and stores them in the cache of the state folder.
class PlaceNaming {
 public:
  /// `stateFolder` may be null; then nothing is stored.
  PlaceNaming(std::unique_ptr<const Geocoder> geocoder, std::unique_ptr<Folder> stateFolder,
              Log& log);

  /// Returns cells of the points, with the radius from the settings and the names of all cells in
  /// Russian, English and the given languages. Blocks until every name that can be found is found.
  std::shared_ptr<const PlaceLookup> name(const std::vector<GeoPoint>& points,
                                          const Settings& settings,
                                          const std::vector<std::string>& localeIDs);
  /// Finds the missing names in the same languages.
  void resolve(const std::vector<std::string>& placeKeys,
               const std::vector<std::string>& localeIDs);
  /// Writes the cache if it has new names. Logs a failure and ignores it.
  void save();

 private:
  std::unique_ptr<Folder> stateFolder_;
  Log& log_;
  std::shared_ptr<PlaceDirectory> directory_;
};

/// Returns the positions of the shots that have one.
std::vector<GeoPoint> positionsOf(const std::vector<AssetBundle>& bundles);

/// Returns the language in which chosen places are compared, in addition to Russian and English.
std::vector<std::string> languagesOf(const PlaceFilter& places);
/// Returns the cells of all shots, against which chosen places are tested. Returns nullptr if no
/// places are chosen, or if places are not named (`naming` is null or `geocodingEnabled` is off).
std::shared_ptr<const PlaceLookup> lookupForFilter(const std::vector<AssetBundle>& bundles,
                                                   const Settings& settings, PlaceNaming* naming);

/// Groups with their names, and the lookup that named their places, if any.
struct NamedGroups {
  std::vector<FolderNaming::Row> rows;
  std::shared_ptr<const PlaceLookup> places;
};
/// Names groups. Without a `lookup`, makes cells from the places of the groups.
NamedGroups nameGroups(std::vector<MediaGroup> groups, const Settings& settings,
                       const std::string& systemLocaleID, PlaceNaming* naming,
                       std::shared_ptr<const PlaceLookup> lookup);

}  // namespace tavrix
