#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "PlaceNaming.h"
#include "Settings.h"
#include "grouping/GroupingEngine.h"
#include "media/MediaAsset.h"
#include "naming/FolderNaming.h"

namespace tavrix {

/// What the settings make of a phone's catalogue: shots, and folders with their names.
struct Library {
  /// Files of the catalogue that are in no folder.
  struct LeftOut {
    std::uint64_t withoutPicture = 0;    ///< sidecars whose picture is not on the phone
    std::vector<std::string> unknown{};  ///< names of files of an unknown kind, no part of any shot
    std::uint64_t bySettings = 0;        ///< of the other shots

    std::uint64_t total() const { return withoutPicture + unknown.size() + bySettings; }
    friend bool operator==(const LeftOut&, const LeftOut&) = default;
  };

  /// From where trips are measured.
  struct Home {
    std::optional<GeoPoint> point;      ///< nothing when no shot has both date and position
    bool isManual = false;              ///< chosen by the person
    std::optional<std::string> name;    ///< that the person gave it
    std::vector<HomeCandidate> rivals;  ///< what makes a choice by itself ambiguous
    int recentSpanDays = 0;             ///< of the candidates' recent days; 0 for none

    friend bool operator==(const Home&, const Home&) = default;
  };

  std::vector<AssetBundle> bundles;  ///< all of them, in catalogue order
  std::vector<AssetBundle> filteredBundles;
  std::vector<FolderNaming::Row> rows;  ///< in display order
  std::vector<HomeCandidate> homeCandidates;
  bool homeIsAmbiguous = false;
  std::optional<Home> home;                ///< of trips mode alone
  std::optional<GroupingReasons> reasons;  ///< when they were wanted; by ids before merging
  std::size_t optimizedCount = 0;          ///< shots of which the phone holds a reduced copy alone
  std::uint64_t fileCount = 0;             ///< of the catalogue
  LeftOut leftOut;
  std::shared_ptr<const PlaceLookup> places;  ///< that named the rows' places, if any did

  friend bool operator==(const Library&, const Library&) = default;
};

/// A pure computation but for the names of places, which `naming` finds; without it folders have
/// none. Groups come with the merges of their mode applied, and reasons only when they are wanted.
Library makeLibrary(const std::vector<MediaAsset>& assets, const Settings& settings,
                    const std::string& systemLocaleID, bool wantsReasons = false,
                    PlaceNaming* naming = nullptr);

/// The same from shots, with the number of files that the catalogue has.
Library makeLibrary(std::vector<AssetBundle> bundles, std::uint64_t fileCount,
                    const Settings& settings, const std::string& systemLocaleID,
                    bool wantsReasons = false, PlaceNaming* naming = nullptr);

/// The folders with their names alone, from shots before any filter.
NamedGroups rowsOf(const std::vector<AssetBundle>& bundles, const Settings& settings,
                   const std::string& systemLocaleID, PlaceNaming* naming = nullptr);

/// A place of the library with its shots.
struct LibraryPlace {
  GeoPoint center;
  std::vector<AssetBundle> bundles;  ///< in catalogue order
  /// What it is called, by language such as "ru"; empty while that is not known.
  std::map<std::string, PlaceNames> names{};

  friend bool operator==(const LibraryPlace&, const LibraryPlace&) = default;
};

/// The places of the located shots, taken in their order; in the order in which places were first
/// met.
std::vector<LibraryPlace> placesOf(const std::vector<AssetBundle>& bundles, double radiusKm);
/// Gives the places their names in Russian and English, as far as they can be found.
void addNames(std::vector<LibraryPlace>& places, const Settings& settings, PlaceNaming& naming);

}  // namespace tavrix
