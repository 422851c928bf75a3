#include "cli/sessions/ChosenPlaces.h"

#include <algorithm>
#include <set>

#include "cli/sentences/PlaceSentences.h"
#include "grouping/PlaceTree.h"
#include "library/PlaceSpelling.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

constexpr std::size_t mostCountriesTold = 8;
constexpr std::size_t mostCitiesTold = 5;

bool hasCity(const PlaceTree::Country& country, const std::string& name) {
  return std::any_of(country.cities.begin(), country.cities.end(),
                     [&](const PlaceTree::City& city) { return city.name == name; });
}

bool isKnown(const PlaceFilter& chosen, const PlaceTree& tree, const std::string& name) {
  return std::any_of(tree.countries.begin(), tree.countries.end(),
                     [&](const PlaceTree::Country& country) {
                       return (country.name == name && chosen.countries.contains(name)) ||
                              (hasCity(country, name) && chosen.cities.contains(name));
                     });
}

/// Returns the cities of a country: "Rome, Florence, …".
std::string citiesOf(const PlaceTree::Country& country) {
  std::vector<std::string_view> names;
  for (const PlaceTree::City& city : country.cities) {
    if (names.size() == mostCitiesTold) break;
    names.push_back(city.name);
  }
  if (names.size() < country.cities.size()) names.push_back("…");
  return joined(names);
}

/// Returns the places of a tree: "Italy (Rome, Florence, …), Russia".
std::string placesIn(const PlaceTree& tree) {
  std::vector<std::string> texts;
  for (const PlaceTree::Country& country : tree.countries) {
    if (texts.size() == mostCountriesTold) break;
    const std::string cities = citiesOf(country);
    if (country.name.empty()) {
      if (!cities.empty()) texts.push_back(cities);
    } else {
      texts.push_back(cities.empty() ? country.name : country.name + " (" + cities + ")");
    }
  }
  if (tree.countries.size() > mostCountriesTold) texts.emplace_back("…");
  return printable(joined({texts.begin(), texts.end()}));
}

/// Returns the chosen names that no place in the tree has, in alphabetical order.
std::vector<std::string> unknownPlaces(const PlaceFilter& chosen, const PlaceTree& tree) {
  std::set<std::string> names = chosen.countries;
  names.insert(chosen.cities.begin(), chosen.cities.end());
  std::erase_if(names, [&](const std::string& name) { return isKnown(chosen, tree, name); });
  return {names.begin(), names.end()};
}

}  // namespace

void tellUnknownPlaces(const CommandContext& context, const std::vector<AssetBundle>& bundles,
                       const PlaceLookup* lookup) {
  const PlaceFilter chosen =
      withPlacesSpelled(context.settings, bundles, lookup).content.places.value_or(PlaceFilter{});
  if (chosen.countries.empty() && chosen.cities.empty()) return;
  const Language language = context.language();
  if (lookup == nullptr) return context.warn(say(language, sentences::chosenPlacesWithoutNames));
  const PlaceTree tree = placeTree(bundles, lookup, chosen.localeID);
  const std::vector<std::string> unknown = unknownPlaces(chosen, tree);
  if (unknown.empty()) return;
  const std::string names = forSentence(joined({unknown.begin(), unknown.end()}));
  const std::string there = placesIn(tree);
  context.warn(there.empty() ? say(language, sentences::chosenPlacesNone, names)
                             : say(language, sentences::chosenPlacesUnknown, names, there));
}

}  // namespace tavrix::cli
