#include "settings/SettingKeys.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "foundation/Text.h"

namespace tavrix {
namespace {

/// Sets a field from a text. Returns false if the text does not have the form of the key.
using Setter = bool (*)(Settings&, std::string_view);
/// Returns the value of a field. Returns nullopt if it has none.
using Getter = std::optional<JsonValue> (*)(const Settings&);

/// How a key is set and read. A setter alone makes a key whose value is not shown.
struct Access {
  constexpr Access(Setter setter, Getter getter = nullptr) : set(setter), get(getter) {}

  Setter set;
  Getter get;
};

struct Key {
  std::string_view name;
  SettingForm form;
  Access access;
  std::string_view choices = {};  ///< separated by spaces
};

template <typename Number>
std::optional<Number> parseNumber(std::string_view text) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<double> parseFinite(std::string_view text) {
  const auto number = parseNumber<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

template <typename Value, typename Field>
bool store(const std::optional<Value>& value, Field& field) {
  if (value) field = *value;
  return value.has_value();
}

template <auto field>
std::optional<JsonValue> getValue(const Settings& settings) {
  return JsonValue{at(settings, field)};
}

/// Reads a value as its text form, which textOf() gives.
template <auto field>
std::optional<JsonValue> getWord(const Settings& settings) {
  return JsonValue{std::string{textOf(at(settings, field))}};
}

template <auto field>
constexpr Access setBoolean{[](Settings& settings, std::string_view text) {
                              at(settings, field) = text == "true";
                              return text == "true" || text == "false";
                            },
                            getValue<field>};

template <auto field>
constexpr Access setAtLeastZero{[](Settings& settings, std::string_view text) {
                                  const auto number = parseFinite(text);
                                  return number && *number >= 0 &&
                                         store(number, at(settings, field));
                                },
                                getValue<field>};

bool setJpegQuality(Settings& settings, std::string_view text) {
  const auto number = parseFinite(text);
  return number && *number >= 0 && *number <= 1 && store(number, settings.layout.jpegQuality);
}

template <auto field>
constexpr Access setCount{[](Settings& settings, std::string_view text) {
                            const auto number = parseNumber<int>(text);
                            return number && *number >= 0 && *number <= largestSettingCount &&
                                   store(number, at(settings, field));
                          },
                          [](const Settings& settings) -> std::optional<JsonValue> {
                            return JsonValue{std::int64_t{at(settings, field)}};
                          }};

template <auto field>
bool setDay(Settings& settings, std::string_view text) {
  return store(parseDay(text), at(settings, field));
}

template <auto field>
constexpr Access setText{[](Settings& settings, std::string_view text) {
                           at(settings, field) = text;
                           return true;
                         },
                         getValue<field>};

bool setEditedPolicy(Settings& settings, std::string_view text) {
  using enum BundleFilter::EditedPolicy;
  for (const auto policy : {both, editedOnly, originalsOnly}) {
    if (text == textOf(policy)) return settings.content.editedPolicy = policy, true;
  }
  return false;
}

bool setMode(Settings& settings, std::string_view text) {
  return store(uiGroupingModeOf(text), settings.gathering.uiMode);
}

bool setGranularity(Settings& settings, std::string_view text) {
  return store(uiGranularityOf(text), settings.gathering.granularity);
}

bool setPrefixMode(Settings& settings, std::string_view text) {
  return store(fileNamePrefixModeOf(text), settings.layout.fileNamePrefixMode);
}

bool setTimeZone(Settings& settings, std::string_view text) {
  return store(TimeZone::load(text), settings.gathering.timeZone);
}

std::optional<JsonValue> getTimeZone(const Settings& settings) {
  return JsonValue{settings.gathering.timeZone.id()};
}

bool setHome(Settings& settings, std::string_view text) {
  const auto comma = std::min(text.find(','), text.size());
  const auto latitude = parseFinite(trimmedWhiteSpace(text.substr(0, comma)));
  const auto longitude =
      parseFinite(trimmedWhiteSpace(text.substr(std::min(comma + 1, text.size()))));
  if (!latitude || !longitude || std::abs(*latitude) > 90 || std::abs(*longitude) > 180) {
    return false;
  }
  const GeoPoint home{*latitude, *longitude};
  // The name belongs to the previous place only.
  if (settings.gathering.homeOverride != home) settings.gathering.homeOverrideName.reset();
  settings.gathering.homeOverride = home;
  return true;
}

bool setHomeName(Settings& settings, std::string_view text) {
  settings.gathering.homeOverrideName.reset();
  if (!text.empty()) settings.gathering.homeOverrideName = text;
  return true;
}

std::optional<JsonValue::Object> parseObject(std::string_view text) {
  try {
    const JsonValue json = parseJson(text);
    const JsonValue::Object* const object = json.asObject();
    return object == nullptr ? std::nullopt : std::optional{*object};
  } catch (const JsonError&) {
    return std::nullopt;
  }
}

bool setNameOverrides(Settings& settings, std::string_view text) {
  const auto object = parseObject(text);
  if (!object) return false;
  settings.naming.nameOverrides.clear();
  for (const auto& [id, name] : *object) {
    if (name.asString() == nullptr) return false;
    settings.naming.nameOverrides.emplace(id, *name.asString());
  }
  return true;
}

std::optional<std::vector<std::string>> textsOf(const JsonValue& json) {
  if (json.asArray() == nullptr) return std::nullopt;
  std::vector<std::string> texts;
  for (const JsonValue& item : *json.asArray()) {
    if (item.asString() == nullptr) return std::nullopt;
    texts.push_back(*item.asString());
  }
  return texts;
}

template <Settings::Gathering::Merges Settings::Gathering::* lists>
bool setMerges(Settings& settings, std::string_view text) {
  const auto object = parseObject(text);
  if (!object) return false;
  (settings.gathering.*lists).clear();
  for (const auto& [mode, merges] : *object) {
    if (merges.asArray() == nullptr || !uiGroupingModeOf(mode)) return false;
    auto& stored = (settings.gathering.*lists)[mode];
    for (const JsonValue& merge : *merges.asArray()) {
      auto ids = textsOf(merge);
      if (!ids) return false;
      stored.push_back(*std::move(ids));
    }
  }
  return true;
}

/// Parses "Италия, Рим": each name may be a country or a city.
PlaceFilter placesByName(std::string_view text) {
  PlaceFilter places;
  while (!text.empty()) {
    const auto end = std::min(text.find(','), text.size());
    const std::string name{trimmedWhiteSpace(text.substr(0, end))};
    if (!name.empty()) places.countries.insert(name);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  places.cities = places.countries;
  return places;
}

bool storeNames(const JsonValue& json, std::set<std::string>& names) {
  const auto texts = textsOf(json);
  if (texts) names = {texts->begin(), texts->end()};
  return texts.has_value();
}

bool storeFlag(const JsonValue& json, bool& flag) {
  if (json.asBool() != nullptr) flag = *json.asBool();
  return json.asBool() != nullptr;
}

std::optional<PlaceFilter> placesByFields(const JsonValue::Object& object) {
  PlaceFilter places;
  for (const auto& [key, value] : object) {
    const bool isTaken = key == "countries"         ? storeNames(value, places.countries)
                         : key == "cities"          ? storeNames(value, places.cities)
                         : key == "includeUnplaced" ? storeFlag(value, places.includeUnplaced)
                         : key == "includeUnresolved"
                             ? storeFlag(value, places.includeUnresolved)
                             : key == "localeID" && value.asString() != nullptr;
    if (!isTaken) return std::nullopt;
    if (key == "localeID") places.localeID = *value.asString();
  }
  return places;
}

bool setPlaces(Settings& settings, std::string_view text) {
  if (trimmedWhiteSpace(withoutByteOrderMark(text)).starts_with('{')) {
    const auto object = parseObject(text);
    return object && store(placesByFields(*object), settings.content.places);
  }
  settings.content.places = placesByName(text);
  return !settings.content.places->cities.empty();
}

using S = Settings;
using enum SettingForm;

constexpr std::array keys{
    Key{"includePhotos", boolean, setBoolean<&S::Content::includePhotos>},
    Key{"includeLive", boolean, setBoolean<&S::Content::includeLive>},
    Key{"liveOnlyPhoto", boolean, setBoolean<&S::Content::liveOnlyPhoto>},
    Key{"includeVideos", boolean, setBoolean<&S::Content::includeVideos>},
    Key{"includeAAE", boolean, setBoolean<&S::Content::includeAAE>},
    Key{"editedPolicy",
        choice,
        {setEditedPolicy, getWord<&S::Content::editedPolicy>},
        "both editedOnly originalsOnly"},
    Key{"skipOptimized", boolean, setBoolean<&S::Content::skipOptimized>},
    Key{"onlyNew", boolean, setBoolean<&S::Layout::onlyNew>},
    Key{"continueFolders", boolean, setBoolean<&S::Layout::continueFolders>},
    Key{"periodFrom", day, setDay<&S::Content::periodFrom>},
    Key{"periodTo", day, setDay<&S::Content::periodTo>},
    Key{"places", places, setPlaces},
    Key{"uiMode", choice, {setMode, getWord<&S::Gathering::uiMode>}, "byDate events trips flat"},
    Key{"granularity",
        choice,
        {setGranularity, getWord<&S::Gathering::granularity>},
        "day month year"},
    Key{"timeZoneID", timeZone, {setTimeZone, getTimeZone}},
    Key{"cameraDays", boolean, setBoolean<&S::Gathering::cameraDays>},
    Key{"datesFromNames", boolean, setBoolean<&S::Gathering::datesFromNames>},
    Key{"eventGapHours", atLeastZero, setAtLeastZero<&S::Gathering::eventGapHours>},
    Key{"eventGapKm", atLeastZero, setAtLeastZero<&S::Gathering::eventGapKm>},
    Key{"splitByDistance", boolean, setBoolean<&S::Gathering::splitByDistance>},
    Key{"placeRadiusKm", atLeastZero, setAtLeastZero<&S::Gathering::placeRadiusKm>},
    Key{"tripDistanceKm", atLeastZero, setAtLeastZero<&S::Gathering::tripDistanceKm>},
    Key{"tripMinDays", count, setCount<&S::Gathering::tripMinDays>},
    Key{"tripCityKm", atLeastZero, setAtLeastZero<&S::Gathering::tripCityKm>},
    Key{"tripMaxGapHours", atLeastZero, setAtLeastZero<&S::Gathering::tripMaxGapHours>},
    Key{"homeWindowMonths", count, setCount<&S::Gathering::homeWindowMonths>},
    Key{"homeRadiusKm", atLeastZero, setAtLeastZero<&S::Gathering::homeRadiusKm>},
    Key{"homePeriods", boolean, setBoolean<&S::Gathering::homePeriods>},
    Key{"homeOverride", point, setHome},
    Key{"homeOverrideName", text, setHomeName},
    Key{"photoJPEG", boolean, setBoolean<&S::Layout::photoJPEG>},
    Key{"jpegQuality", fraction, {setJpegQuality, getValue<&S::Layout::jpegQuality>}},
    Key{"videoH264", boolean, setBoolean<&S::Layout::videoH264>},
    Key{"separatePhotoVideo", boolean, setBoolean<&S::Layout::separatePhotoVideo>},
    Key{"flattenSingleKind", boolean, setBoolean<&S::Layout::flattenSingleKind>},
    Key{"fileNamePrefixMode",
        choice,
        {setPrefixMode, getWord<&S::Layout::fileNamePrefixMode>},
        "none phone custom"},
    Key{"customFileNamePrefix", text, setText<&S::Layout::customFileNamePrefix>},
    Key{"packAsZip", boolean, setBoolean<&S::Layout::packAsZip>},
    Key{"packPerGroup", boolean, setBoolean<&S::Layout::packPerGroup>},
    // withSetting() sets it, because its value may be the title of a saved preset.
    Key{"nameTemplate", nameTemplate, nullptr},
    Key{"geocodingEnabled", boolean, setBoolean<&S::Naming::geocodingEnabled>},
    Key{"mergeDistricts", boolean, setBoolean<&S::Naming::mergeDistricts>},
    Key{"mergeSameNames", boolean, setBoolean<&S::Naming::mergeSameNames>},
    Key{"severalCities", boolean, setBoolean<&S::Naming::severalCities>},
    Key{"wholeFolderDates", boolean, setBoolean<&S::Naming::wholeFolderDates>},
    Key{"datelessName", text, setText<&S::Naming::datelessName>},
    Key{"nameByGroupID", boolean, setBoolean<&S::Naming::nameByGroupID>},
    Key{"nameOverrides", textMap, setNameOverrides},
    Key{"mergesByMode", merges, setMerges<&S::Gathering::mergesByMode>},
    Key{"rejectedSuggestions", merges, setMerges<&S::Gathering::rejectedSuggestions>},
};

const Key* findKey(std::string_view name) {
  const auto* const found =
      std::find_if(keys.begin(), keys.end(), [&](const Key& each) { return each.name == name; });
  return found == keys.end() ? nullptr : found;
}

std::vector<std::string_view> wordsOf(std::string_view text) {
  std::vector<std::string_view> words;
  while (!text.empty()) {
    const auto end = std::min(text.find(' '), text.size());
    words.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

}  // namespace

std::vector<std::string_view> settingKeys() {
  std::vector<std::string_view> names;
  names.reserve(keys.size());
  for (const Key& key : keys) names.push_back(key.name);
  return names;
}

std::optional<SettingForm> settingForm(std::string_view key) {
  const Key* const found = findKey(key);
  return found == nullptr ? std::nullopt : std::optional{found->form};
}

std::vector<std::string_view> settingChoices(std::string_view key) {
  const Key* const found = findKey(key);
  return found == nullptr ? std::vector<std::string_view>{} : wordsOf(found->choices);
}

std::optional<JsonValue> settingValue(const Settings& settings, std::string_view key) {
  const Key* const found = findKey(key);
  const bool isShown = found != nullptr && found->access.get != nullptr;
  return isShown ? found->access.get(settings) : std::nullopt;
}

std::variant<Settings, SettingError> withSetting(Settings settings, std::string_view assignment,
                                                 const std::vector<SavedPreset>& saved) {
  using Kind = SettingError::Kind;
  const auto equals = assignment.find('=');
  if (equals == std::string_view::npos) {
    return SettingError{.kind = Kind::notAssignment, .key = std::string{assignment}};
  }
  const std::string_view name = assignment.substr(0, equals);
  const std::string_view value = assignment.substr(equals + 1);
  const Key* const key = findKey(name);
  if (key == nullptr) {
    return SettingError{
        .kind = Kind::unknownKey, .key = std::string{name}, .value = std::string{value}};
  }
  SettingError error{.kind = Kind::badValue,
                     .key = std::string{name},
                     .value = std::string{value},
                     .form = key->form,
                     .choices = wordsOf(key->choices)};
  if (key->form == nameTemplate) {
    auto given = givenTemplate(value, saved);
    if (auto* const fault = std::get_if<TemplateFault>(&given)) {
      error.template_ = std::move(*fault);
      return error;
    }
    settings.naming.nameTemplate = std::get<NameTemplate>(std::move(given));
    return settings;
  }
  if (key->access.set(settings, value)) return settings;
  return error;
}

}  // namespace tavrix
