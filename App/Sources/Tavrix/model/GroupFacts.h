#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "foundation/Shared.h"
#include "grouping/GroupFaces.h"
#include "library/Library.h"
#include "model/NavOutline.h"

namespace tavrix {

/// The facts about a folder that the display needs and that depend on its shots only.
struct GroupFacts {
  MediaGroup::MediaCounts counts;
  std::uint64_t pictureCount = 0;
  std::uint64_t optimizedCount = 0;
  bool hasLivePhoto = false;
  bool isFileDated = false;  ///< of each of its shots only the date of the file is known
  Shared<GroupFaces> faces;
  std::vector<NavOutline::Month> months;  ///< the months of its shots
  std::vector<NavOutline::Place> places;  ///< the places of its shots, as far as they have names
  std::uint64_t noPlaceCount = 0;
  std::string searchKey;  ///< folder name, places and months, case-folded

  friend bool operator==(const GroupFacts&, const GroupFacts&) = default;
};

/// The facts about a whole library. Made once per grouping, in the background.
struct LibraryFacts {
  std::vector<GroupFacts> groups;  ///< one per row
  NavOutline outline{};
  using CountsByGroup = std::map<std::string, std::uint64_t, std::less<>>;
  /// Reduced copies that the settings exclude, by the row they belong to.
  CountsByGroup skippedOptimized{};
  /// Excluded reduced copies without any displayed row, by the group they would be in.
  CountsByGroup hiddenOptimized{};

  friend bool operator==(const LibraryFacts&, const LibraryFacts&) = default;
};

/// The context in which the facts are made.
struct FactsContext {
  const Settings& settings;
  std::string localeID;                       ///< for the names of months and places
  std::shared_ptr<const PlaceLookup> places;  ///< of all shots; nullptr if places have no names
  std::string systemLocaleID;
};

/// Makes the facts. They share the pictures with the library.
LibraryFacts makeFacts(const std::shared_ptr<const Library>& library, const FactsContext& context);

/// Returns for example "Май 2026" or "May 2026".
std::string monthTitle(const NavOutline::Month& month, const std::string& localeID);

}  // namespace tavrix
