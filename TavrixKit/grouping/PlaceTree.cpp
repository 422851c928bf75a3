#include "grouping/PlaceTree.h"

#include <algorithm>
#include <map>

#include "foundation/StringMap.h"

namespace tavrix {
namespace {

struct CountryFiles {
  std::optional<std::string> code;
  std::uint64_t count = 0;
  std::map<std::string, std::uint64_t> cities;
};

template <typename Node>
void sortByCount(std::vector<Node>& nodes) {
  std::stable_sort(nodes.begin(), nodes.end(),
                   [](const Node& a, const Node& b) { return a.count > b.count; });
}

PlaceTree::Country countryNode(const std::string& name, const CountryFiles& files) {
  PlaceTree::Country country{name, files.code, files.count, {}};
  for (const auto& [city, count] : files.cities) country.cities.push_back({city, count});
  sortByCount(country.cities);
  return country;
}

void addFiles(CountryFiles& country, const PlaceNames& names, std::uint64_t count) {
  country.count += count;
  if (!country.code) country.code = names.countryCode;
  if (const auto& city = names.cityOrRegion()) country.cities[*city] += count;
}

/// The files of a place cell.
struct CellFiles {
  std::string key;
  GeoPoint firstPoint;
  std::uint64_t count = 0;
};

/// Returns the cells of the shots in the order of their first shots. Adds the files of shots
/// without a cell to `withoutCell`.
std::vector<CellFiles> cellsOf(const std::vector<AssetBundle>& bundles, const PlaceLookup* lookup,
                               std::uint64_t& withoutCell) {
  std::vector<CellFiles> cells;
  StringMap<std::size_t> indices;
  for (const AssetBundle& bundle : bundles) {
    const auto files = static_cast<std::uint64_t>(bundle.assets().size());
    const auto point = lookup == nullptr ? std::nullopt : bundle.position();
    if (!point) {
      withoutCell += files;
      continue;
    }
    std::string key = lookup->placeKey(*point);
    const auto [found, isNew] = indices.try_emplace(key, cells.size());
    if (isNew) cells.push_back({std::move(key), *point});
    cells[found->second].count += files;
  }
  return cells;
}

}  // namespace

PlaceTree placeTree(const std::vector<AssetBundle>& bundles, const PlaceLookup* lookup,
                    const std::string& localeID) {
  PlaceTree tree;
  std::map<std::string, CountryFiles> countries;
  std::map<std::string, GeoPoint> unresolved;
  for (const CellFiles& cell : cellsOf(bundles, lookup, tree.unplacedCount)) {
    if (const auto names = lookup->names(cell.key, localeID)) {
      addFiles(countries[names->countryName.value_or("")], *names, cell.count);
    } else {
      tree.unresolvedCount += cell.count;
      unresolved.emplace(cell.key, cell.firstPoint);
    }
  }
  for (const auto& [name, files] : countries) tree.countries.push_back(countryNode(name, files));
  sortByCount(tree.countries);
  for (const auto& [key, point] : unresolved) tree.unresolvedPoints.push_back(point);
  return tree;
}

}  // namespace tavrix
