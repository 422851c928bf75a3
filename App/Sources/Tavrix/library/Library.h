#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/Shared.h"
#include "grouping/GroupingEngine.h"
#include "library/PlaceNaming.h"
#include "media/MediaAsset.h"
#include "naming/FolderNaming.h"
#include "settings/Settings.h"

namespace tavrix {

/// The catalogue of a phone after the settings are applied: shots, and folders with their names.
struct Library {
  /// Files of the catalogue that are in no folder.
  struct LeftOut {
    std::uint64_t withoutPicture = 0;    ///< sidecars whose picture is not on the phone
    std::vector<std::string> unknown{};  ///< names of files of unknown kind, in no shot
    std::uint64_t bySettings = 0;        ///< files of other shots, excluded by the settings
    /// Files of folders and shots that were not chosen; nullopt without a choice.
    std::optional<std::uint64_t> byChoice{};

    std::uint64_t total() const {
      return withoutPicture + unknown.size() + bySettings + byChoice.value_or(0);
    }
    friend bool operator==(const LeftOut&, const LeftOut&) = default;
  };

  /// The point from which trips are measured.
  struct Home {
    std::optional<GeoPoint> point;      ///< nullopt if no shot has both date and position
    bool isManual = false;              ///< chosen by the user
    std::optional<std::string> name;    ///< the name given by the user
    std::vector<HomeCandidate> rivals;  ///< candidates that make the detected home ambiguous
    int recentSpanDays = 0;             ///< length of the candidates' recent period; 0: none
    /// The homes one after another; `point` is the last one. Empty if there is only one.
    std::vector<HomePeriod> periods{};

    friend bool operator==(const Home&, const Home&) = default;
  };

  Shared<std::vector<AssetBundle>> bundles;  ///< all of them, in catalogue order
  Shared<std::vector<AssetBundle>> filteredBundles;
  std::vector<FolderNaming::Row> rows;  ///< in display order
  std::vector<HomeCandidate> homeCandidates;
  bool homeIsAmbiguous = false;
  std::optional<Home> home;                ///< in trips mode only
  std::optional<GroupingReasons> reasons;  ///< only if requested; keyed by ids before merging
  std::size_t optimizedCount = 0;          ///< shots of which the phone has only a reduced copy
  std::uint64_t fileCount = 0;             ///< files in the catalogue
  LeftOut leftOut;
  /// Folders that the user may want to merge; only in trips mode, and only if neither merged nor
  /// rejected.
  std::vector<MergeSuggestion> suggestions{};
  ShotClock clock{};                          ///< of the days of the shots
  std::shared_ptr<const PlaceLookup> places;  ///< the lookup that named the rows' places, if any
  /// Names the home candidates that people see and the stays of `reasons`; nullptr if places have
  /// no names.
  std::shared_ptr<const PlaceLookup> landmarks;

  friend bool operator==(const Library&, const Library&) = default;
};

/// Returns the group with this id, which may have been merged with others, or nullptr.
const MediaGroup* groupOf(const Library& library, std::string_view id);

/// Computes the library. Applies the merges of the current mode, and records reasons only if
/// `wantsReasons`. Finds the names of places with `naming`, its only side effect; without it
/// folders get no place names.
Library makeLibrary(const std::vector<MediaAsset>& assets, const Settings& settings,
                    const std::string& systemLocaleID, bool wantsReasons = false,
                    PlaceNaming* naming = nullptr);

/// As above, from shots. `fileCount` is the number of files in the catalogue.
Library makeLibrary(Shared<std::vector<AssetBundle>> bundles, std::uint64_t fileCount,
                    const Settings& settings, const std::string& systemLocaleID,
                    bool wantsReasons = false, PlaceNaming* naming = nullptr);

/// Computes only the folders with their names, from unfiltered shots.
NamedGroups rowsOf(const Shared<std::vector<AssetBundle>>& bundles, const Settings& settings,
                   const std::string& systemLocaleID, PlaceNaming* naming = nullptr);

/// A place of the library with its shots.
struct LibraryPlace {
  GeoPoint center;
  std::vector<AssetBundle> bundles;  ///< in catalogue order
  /// Its names by language, such as "ru"; empty until they are known.
  std::map<std::string, PlaceNames> names{};

  friend bool operator==(const LibraryPlace&, const LibraryPlace&) = default;
};

/// Returns the places of the shots that have a position, in the order of their first shot. Clusters
/// the shots in the given order.
std::vector<LibraryPlace> placesOf(const std::vector<AssetBundle>& bundles, double radiusKm);
/// Adds the Russian and English names of the places, as far as they can be found.
void addNames(std::vector<LibraryPlace>& places, const Settings& settings, PlaceNaming& naming);

}  // namespace tavrix
