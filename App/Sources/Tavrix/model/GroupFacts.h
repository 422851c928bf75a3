#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Library.h"
#include "foundation/Shared.h"
#include "model/NavOutline.h"

namespace tavrix {

/// What the display needs of a folder and what depends on nothing but its shots.
struct GroupFacts {
  Shared<MediaGroup> group;
  MediaGroup::MediaCounts counts;
  std::uint64_t pictureCount = 0;
  std::uint64_t optimizedCount = 0;
  bool hasLivePhoto = false;
  Shared<std::vector<MediaAsset>> previewAssets;
  std::vector<NavOutline::Month> months;  ///< in which its shots were taken
  std::vector<NavOutline::Place> places;  ///< where, as far as that has a name
  std::uint64_t noPlaceCount = 0;
  std::string searchKey;  ///< folder name, places and months, case-folded

  friend bool operator==(const GroupFacts&, const GroupFacts&) = default;
};

/// The same of a whole library; made once for each grouping, in the background.
struct LibraryFacts {
  std::vector<GroupFacts> groups;  ///< one for each row
  NavOutline outline;
  using CountsByGroup = std::map<std::string, std::uint64_t, std::less<>>;
  /// Reduced copies that the settings leave out, by the row that they belong to.
  CountsByGroup skippedOptimized;
  /// Those that no row is left of, by the group that they would be in.
  CountsByGroup hiddenOptimized;

  friend bool operator==(const LibraryFacts&, const LibraryFacts&) = default;
};

/// How the facts are told.
struct FactsContext {
  const Settings& settings;
  std::string localeID;                       ///< of the names of months and places
  std::shared_ptr<const PlaceLookup> places;  ///< of all shots; null when places have no names
  std::string systemLocaleID;
};

/// The groups stay in the library, which the facts share.
LibraryFacts makeFacts(const std::shared_ptr<const Library>& library, const FactsContext& context);

/// The groups alone, for a library that nobody is shown.
LibraryFacts makeBareFacts(const std::shared_ptr<const Library>& library);

/// "Май 2026", "May 2026".
std::string monthTitle(const NavOutline::Month& month, const std::string& localeID);

}  // namespace tavrix
