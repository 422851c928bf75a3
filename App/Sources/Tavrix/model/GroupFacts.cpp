#include "model/GroupFacts.h"

#include <absl/container/flat_hash_set.h>

#include <algorithm>
#include <utility>

#include "foundation/StringMap.h"
#include "foundation/Text.h"
#include "library/ShownRows.h"

namespace tavrix {
namespace {

/// The names of places, looked up once per cell.
class PlaceNamesOfShots {
 public:
  explicit PlaceNamesOfShots(const FactsContext& context) : context_(context) {}

  /// Returns an empty text for a shot without a place, or whose place has no name.
  const std::string& nameOf(const AssetBundle& bundle) {
    static const std::string none;
    if (!context_.places) return none;
    const auto position = bundle.position();
    if (!position) return none;
    const auto [found, isNew] = names_.try_emplace(context_.places->placeKey(*position));
    if (isNew) {
      const auto names = context_.places->names(found->first, context_.localeID);
      if (names) found->second = names->city.value_or(names->countryName.value_or(""));
    }
    return found->second;
  }

 private:
  const FactsContext& context_;
  StringMap<std::string> names_;
};

using MonthKey = std::pair<int, int>;  // year and month

/// Counts of files; few enough for sorted maps.
struct Tally {
  std::map<MonthKey, std::uint64_t> months;
  std::map<std::string, std::uint64_t, std::less<>> places;
  std::uint64_t noPlace = 0;
  std::uint64_t total = 0;

  void add(const std::optional<MonthKey>& month, const std::string& place, std::uint64_t files) {
    if (month) months[*month] += files;
    (place.empty() ? noPlace : places[place]) += files;
    total += files;
  }
  void add(const Tally& other) {
    for (const auto& [month, files] : other.months) months[month] += files;
    for (const auto& [place, files] : other.places) places[place] += files;
    noPlace += other.noPlace;
    total += other.total;
  }
};

std::vector<NavOutline::Month> monthsOf(const Tally& tally) {
  std::vector<NavOutline::Month> months;
  for (const auto& [key, files] : tally.months) months.push_back({key.first, key.second, files});
  std::reverse(months.begin(), months.end());
  return months;
}

std::vector<NavOutline::Place> placesOf(const Tally& tally) {
  std::vector<NavOutline::Place> places;
  for (const auto& [name, files] : tally.places) places.push_back({name, files});
  std::stable_sort(places.begin(), places.end(),
                   [](const auto& a, const auto& b) { return a.count > b.count; });
  return places;
}

NavOutline outlineOf(const Tally& tally) {
  NavOutline outline;
  for (const NavOutline::Month& month : monthsOf(tally)) {
    if (outline.years.empty() || outline.years.back().year != month.year) {
      outline.years.push_back({month.year, 0, {}});
    }
    outline.years.back().months.push_back(month);
    outline.years.back().count += month.count;
  }
  outline.places = placesOf(tally);
  outline.noPlaceCount = tally.noPlace;
  outline.total = tally.total;
  return outline;
}

std::optional<MonthKey> monthOf(const AssetBundle& bundle, const ShotClock& clock) {
  const auto day = clock.dayOf(bundle);
  if (!day) return std::nullopt;
  return MonthKey{static_cast<int>(day->year()),
                  static_cast<int>(static_cast<unsigned>(day->month()))};
}

std::string searchKeyOf(const std::string& folderName, const GroupFacts& facts,
                        const std::string& localeID) {
  std::string text = folderName;
  for (const NavOutline::Place& place : facts.places) text.append("\n").append(place.name);
  for (const NavOutline::Month& month : facts.months) {
    text.append("\n").append(monthTitle(month, localeID));
  }
  return caseFolded(text);
}

/// Ids of the shots whose original is a reduced copy, whether the settings exclude them or not.
using OptimizedShots = absl::flat_hash_set<std::string_view>;

OptimizedShots optimizedShotsOf(const Library& library) {
  OptimizedShots ids;
  if (library.optimizedCount == 0) return ids;
  for (const AssetBundle& bundle : *library.bundles) {
    if (bundle.original().isOptimized()) ids.insert(bundle.id());
  }
  return ids;
}

GroupFacts factsOf(const FolderNaming::Row& row, const ShotClock& clock,
                   const FactsContext& context, const OptimizedShots& optimized,
                   PlaceNamesOfShots& names, Tally& total) {
  GroupFacts facts;
  facts.isFileDated = std::ranges::all_of(row.group->bundles, [](const AssetBundle& bundle) {
    return bundle.primaryPicture().dateSource() == DateSource::file;
  });
  Tally tally;
  for (const AssetBundle& bundle : row.group->bundles) {
    tally.add(monthOf(bundle, clock), names.nameOf(bundle), bundle.assets().size());
    facts.pictureCount += bundle.pictureCount();
    facts.hasLivePhoto = facts.hasLivePhoto || bundle.isLivePhoto();
    if (optimized.contains(bundle.id())) ++facts.optimizedCount;
  }
  facts.counts = row.group->counts();
  facts.faces = GroupFaces::of(row.group->bundles);
  facts.months = monthsOf(tally);
  facts.places = placesOf(tally);
  facts.noPlaceCount = tally.noPlace;
  facts.searchKey = searchKeyOf(row.name, facts, context.localeID);
  total.add(tally);
  return facts;
}

/// Counts the excluded reduced copies in the rows or groups where they would be.
void addSkipped(const Library& library, const FactsContext& context,
                const OptimizedShots& optimized, LibraryFacts& facts) {
  if (!context.settings.content.skipOptimized || optimized.empty()) return;
  Settings settings = context.settings;
  settings.content.skipOptimized = false;
  const ShownRows shown{library.rows};
  for (const auto& row : rowsOf(library.bundles, settings, context.systemLocaleID).rows) {
    const auto rows = shown.of(*row.group);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (!optimized.contains(row.group->bundles[i].id())) continue;
      ++(rows[i] ? facts.skippedOptimized[library.rows[*rows[i]].group->id]
                 : facts.hiddenOptimized[row.group->id]);
    }
  }
}

}  // namespace

std::string monthTitle(const NavOutline::Month& month, const std::string& localeID) {
  return capitalised(monthName(month.month, localeID, MonthNameStyle::full), localeID) + " " +
         std::to_string(month.year);
}

LibraryFacts makeFacts(const std::shared_ptr<const Library>& library, const FactsContext& context) {
  LibraryFacts facts;
  PlaceNamesOfShots names{context};
  Tally total;
  const OptimizedShots optimized = optimizedShotsOf(*library);
  facts.groups.reserve(library->rows.size());
  for (const FolderNaming::Row& row : library->rows) {
    facts.groups.push_back(factsOf(row, library->clock, context, optimized, names, total));
  }
  facts.outline = outlineOf(total);
  addSkipped(*library, context, optimized, facts);
  return facts;
}

}  // namespace tavrix
