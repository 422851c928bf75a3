#include "library/PlaceSpelling.h"

#include <algorithm>

#include "foundation/StringMap.h"
#include "foundation/Text.h"

namespace tavrix {
namespace {

using Names = std::set<std::string>;

/// Returns true if the text contains one of the bytes with which Russian letters begin in UTF-8.
bool isCyrillic(std::string_view text) { return text.find_first_of("\xD0\xD1") != text.npos; }

/// Returns a key that is equal for all spellings of a name.
std::string comparable(std::string_view name) {
  std::string text = caseFolded(name);
  constexpr std::string_view withDots = "ё";
  for (auto at = text.find(withDots); at != text.npos; at = text.find(withDots, at)) {
    text.replace(at, withDots.size(), "е");
  }
  return text;
}

/// The typed names by their comparable() key, and which of them match a place.
class TypedNames {
 public:
  explicit TypedNames(const Names& names) {
    for (const std::string& name : names) typed_.emplace(comparable(name), name);
  }

  /// If a place has a typed name as `name`, stores the library's own name for that place.
  void match(const std::optional<std::string>& name, const std::optional<std::string>& own) {
    if (!name || !own || typed_.empty()) return;
    const auto found = typed_.find(comparable(*name));
    if (found == typed_.end()) return;
    matched_.insert(found->second);
    own_.insert(*own);
  }

  bool hasMatched(const std::string& typed) const { return matched_.contains(typed); }

  /// Returns the library's names, and the typed names that match no place, neither here nor among
  /// `others`.
  Names spelled(const TypedNames& others) const {
    Names names = own_;
    for (const auto& [compared, typed] : typed_) {
      if (!hasMatched(typed) && !others.hasMatched(typed)) names.insert(typed);
    }
    return names;
  }

 private:
  StringMap<std::string> typed_;
  Names matched_;
  Names own_;
};

StringSet keysOf(const std::vector<AssetBundle>& bundles, const PlaceLookup& lookup) {
  StringSet keys;
  for (const AssetBundle& bundle : bundles) {
    if (const auto position = bundle.position()) keys.insert(lookup.placeKey(*position));
  }
  return keys;
}

PlaceFilter spelled(const PlaceFilter& typed, const std::vector<AssetBundle>& bundles,
                    const PlaceLookup& lookup) {
  const bool isRussian = std::any_of(typed.cities.begin(), typed.cities.end(), isCyrillic) ||
                         std::any_of(typed.countries.begin(), typed.countries.end(), isCyrillic);
  PlaceFilter result = typed;
  std::vector<std::string> languages{typed.localeID};
  if (typed.localeID.empty()) {
    result.localeID = isRussian ? "ru_RU" : "en_US";
    languages = {"ru_RU", "en_US"};
  }
  TypedNames countries{typed.countries};
  TypedNames cities{typed.cities};
  for (const std::string& key : keysOf(bundles, lookup)) {
    const auto own = lookup.names(key, result.localeID);
    if (!own) continue;
    countries.match(own->countryCode, own->countryName);
    for (const std::string& language : languages) {
      const auto names = lookup.names(key, language);
      if (!names) continue;
      countries.match(names->countryName, own->countryName);
      cities.match(names->cityOrRegion(), own->cityOrRegion());
    }
  }
  result.countries = countries.spelled(cities);
  result.cities = cities.spelled(countries);
  return result;
}

}  // namespace

Settings withPlacesSpelled(const Settings& settings, const std::vector<AssetBundle>& bundles,
                           const PlaceLookup* lookup) {
  Settings result = settings;
  if (result.content.places && lookup != nullptr) {
    result.content.places = spelled(*settings.content.places, bundles, *lookup);
  }
  return result;
}

}  // namespace tavrix
