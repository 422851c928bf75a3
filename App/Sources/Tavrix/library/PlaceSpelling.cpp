#include "PlaceSpelling.h"

#include <algorithm>

#include "foundation/StringMap.h"
#include "foundation/Text.h"

namespace tavrix {
namespace {

using Names = std::set<std::string>;

/// Russian names hold Cyrillic letters, which begin with these bytes.
bool isCyrillic(std::string_view text) { return text.find_first_of("\xD0\xD1") != text.npos; }

/// Equal for two spellings of a name.
std::string comparable(std::string_view name) {
  std::string text = caseFolded(name);
  constexpr std::string_view withDots = "ё";
  for (auto at = text.find(withDots); at != text.npos; at = text.find(withDots, at)) {
    text.replace(at, withDots.size(), "е");
  }
  return text;
}

/// The typed names by what they are compared by, and which of them a place bears.
class TypedNames {
 public:
  explicit TypedNames(const Names& names) {
    for (const std::string& name : names) typed_.emplace(comparable(name), name);
  }

  /// Takes the library's own name for a place that bears a typed one under `name`.
  void match(const std::optional<std::string>& name, const std::optional<std::string>& own) {
    if (!name || !own || typed_.empty()) return;
    const auto found = typed_.find(comparable(*name));
    if (found == typed_.end()) return;
    matched_.insert(found->second);
    own_.insert(*own);
  }

  bool hasMatched(const std::string& typed) const { return matched_.contains(typed); }

  /// The library's names, and those typed ones that no place bears here or as one of `others`, when
  /// typed as such, too.
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
  if (result.places && lookup != nullptr) {
    result.places = spelled(*settings.places, bundles, *lookup);
  }
  return result;
}

}  // namespace tavrix
