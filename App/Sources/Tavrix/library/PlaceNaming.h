#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Log.h"
#include "foundation/Shared.h"
#include "foundation/files/Folder.h"
#include "media/AssetBundle.h"
#include "settings/Settings.h"

namespace tavrix {

class GeocodedDistricts;
class Geocoder;
class PlaceCells;
class PlaceDirectory;
class PlaceLookup;
class PlaceZones;

/// Finds the names of a library's places and stores them in the cache of the state folder. Safe to
/// use from several threads.
class PlaceNaming {
 public:
  /// `stateFolder` may be null; then nothing is stored. `log` must outlive this object.
  PlaceNaming(std::unique_ptr<const Geocoder> geocoder, std::unique_ptr<Folder> stateFolder,
              Log& log);

  /// Divides the points into cells with the radius from `settings`, and finds the names of the
  /// cells in Russian, English and the languages of `localeIDs` ("de_DE"). Blocks until the
  /// geocoder has answered. A cell that it cannot name has no names. The result may outlive this
  /// object.
  std::shared_ptr<const PlaceLookup> name(const std::vector<GeoPoint>& points,
                                          const Settings& settings,
                                          const std::vector<std::string>& localeIDs);
  /// As above, for the positions of shots. Divides the shots of one library into cells only once.
  std::shared_ptr<const PlaceLookup> name(const Shared<std::vector<AssetBundle>>& bundles,
                                          const Settings& settings,
                                          const std::vector<std::string>& localeIDs);
  /// Finds the missing names of the cells with these keys (see PlaceLookup::placeKey()), in
  /// Russian, English and the languages of `localeIDs`. Blocks. Lookups that name() returned before
  /// have the new names, too.
  void resolve(const std::vector<std::string>& placeKeys,
               const std::vector<std::string>& localeIDs);
  /// Returns the time zones of places. They may outlive this object.
  const std::shared_ptr<const PlaceZones>& zones() const { return zones_; }
  /// Writes the cache if it has new names. Logs a failure and ignores it.
  void save();

 private:
  /// The cells of the library that was named last.
  struct LibraryCells {
    Shared<std::vector<AssetBundle>> bundles;
    double radiusKm = 0;
    std::shared_ptr<const PlaceCells> cells;
  };

  std::shared_ptr<const PlaceCells> cellsOf(const Shared<std::vector<AssetBundle>>& bundles,
                                            double radiusKm);
  std::shared_ptr<const PlaceLookup> name(std::shared_ptr<const PlaceCells> cells,
                                          const Settings& settings,
                                          const std::vector<std::string>& localeIDs);

  std::unique_ptr<Folder> stateFolder_;
  Log& log_;
  std::shared_ptr<PlaceDirectory> directory_;
  std::shared_ptr<const PlaceZones> zones_;
  std::shared_ptr<const GeocodedDistricts> districts_;
  std::mutex mutex_;
  LibraryCells last_;
};

/// Returns the positions of the shots that have one.
std::vector<GeoPoint> positionsOf(const std::vector<AssetBundle>& bundles);

/// Returns the cells of all shots, by which folders are named and against which chosen places are
/// tested. Returns nullptr if places are not named (`naming` is null or `geocodingEnabled` is off).
std::shared_ptr<const PlaceLookup> lookupOf(const Shared<std::vector<AssetBundle>>& bundles,
                                            const Settings& settings,
                                            const std::string& systemLocaleID, PlaceNaming* naming);

/// Returns the settings of grouping. The zones of places are those of `naming`, if there is one.
GroupingSettings groupingSettings(const Settings& settings, const PlaceNaming* naming);

/// Groups with their names, and the lookup that named their places, if any.
struct NamedGroups {
  std::vector<FolderNaming::Row> rows;
  std::shared_ptr<const PlaceLookup> places;
};
/// Names the groups, in their order. If `lookup` is null, it is made from the shots of the groups.
/// If `naming` is null or `geocodingEnabled` is off, no names are looked up.
NamedGroups nameGroups(std::vector<MediaGroup> groups, const Settings& settings,
                       const std::string& systemLocaleID, PlaceNaming* naming,
                       std::shared_ptr<const PlaceLookup> lookup);

}  // namespace tavrix
