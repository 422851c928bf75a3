#include "settings/PersistedSettings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "naming/NameTemplateCoding.h"
#include "settings/SettingKeys.h"

namespace tavrix::PersistedSettings {
namespace {

/// How one key is stored. If `load` rejects an object, it returns false and leaves the values
/// unchanged.
struct Key {
  std::string_view name;
  std::string_view setting;  ///< the name of the setting; empty if it is not a setting
  std::optional<JsonValue> (*store)(const Values&);
  bool (*load)(Values&, const JsonValue&);
};

template <auto field>
std::optional<JsonValue> storeNumber(const Values& values) {
  return JsonValue{at(values.settings, field)};
}

template <auto field>
bool loadNumber(Values& values, const JsonValue& object) {
  const auto number = object.asNumber();
  if (!number || !std::isfinite(*number) || *number < 0) return false;
  at(values.settings, field) = *number;
  return true;
}

template <auto field>
std::optional<JsonValue> storeCount(const Values& values) {
  return JsonValue{static_cast<double>(at(values.settings, field))};
}

/// Ignores the fraction of the number.
template <auto field>
bool loadCount(Values& values, const JsonValue& object) {
  const auto number = object.asNumber();
  if (!number || !(*number > -1 && *number < largestSettingCount + 1)) return false;
  at(values.settings, field) = static_cast<int>(*number);
  return true;
}

/// A switch is stored as the number 0 or 1; any other number also means on.
template <auto field>
std::optional<JsonValue> storeFlag(const Values& values) {
  return JsonValue{at(values.settings, field) ? 1.0 : 0.0};
}

template <auto field>
bool loadFlag(Values& values, const JsonValue& object) {
  const bool* const flag = object.asBool();
  const auto number = flag != nullptr ? (*flag ? 1.0 : 0.0) : object.asNumber();
  if (!number) return false;
  at(values.settings, field) = *number != 0;
  return true;
}

std::optional<JsonValue> storeHome(const Values& values) {
  const auto home = manualHome(values.settings);
  if (!home) return std::nullopt;
  JsonValue::Object object{{"latitude", {home->latitude}}, {"longitude", {home->longitude}}};
  if (home->name) object.emplace("name", JsonValue{*home->name});
  return JsonValue{std::move(object)};
}

/// Returns a member that is a number. Returns nullopt if it is not, or if its absolute value
/// exceeds the bound.
std::optional<double> degreesOf(const JsonValue& object, std::string_view key, double bound) {
  const JsonValue* const member = object.member(key);
  const auto number = member == nullptr ? std::nullopt : member->asNumber();
  return number && std::abs(*number) <= bound ? number : std::nullopt;
}

bool loadHome(Values& values, const JsonValue& object) {
  const auto latitude = degreesOf(object, "latitude", 90);
  const auto longitude = degreesOf(object, "longitude", 180);
  if (!latitude || !longitude) return false;
  ManualHome home{*latitude, *longitude};
  if (const JsonValue* const name = object.member("name"); name != nullptr && !name->isNull()) {
    if (name->asString() == nullptr) return false;
    home.name = *name->asString();
  }
  values.settings = withManualHome(std::move(values.settings), home);
  return true;
}

/// Returns the template parsed from its text form, whatever its length.
JsonValue templateObject(const NameTemplate& nameTemplate) {
  JsonLimits limits;
  limits.maxValueBytes = std::numeric_limits<std::size_t>::max() / 2;
  return parseJson(NameTemplateCoding::encodeText(nameTemplate), limits);
}

std::optional<NameTemplate> templateOf(const JsonValue& object) {
  try {
    return NameTemplateCoding::decode(object);
  } catch (const NameTemplateError&) {
    return std::nullopt;
  }
}

std::optional<JsonValue> storeTemplate(const Values& values) {
  return templateObject(values.settings.naming.nameTemplate);
}

bool loadTemplate(Values& values, const JsonValue& object) {
  auto nameTemplate = templateOf(object);
  if (nameTemplate) values.settings.naming.nameTemplate = *std::move(nameTemplate);
  return nameTemplate.has_value();
}

std::optional<JsonValue> storePresets(const Values& values) {
  JsonValue::Array presets;
  for (const SavedPreset& preset : values.savedPresets) {
    presets.push_back({JsonValue::Object{{"name", JsonValue{preset.name}},
                                         {"template", templateObject(preset.nameTemplate)}}});
  }
  return JsonValue{std::move(presets)};
}

bool loadPresets(Values& values, const JsonValue& object) {
  if (object.asArray() == nullptr) return false;
  std::vector<SavedPreset> presets;
  for (const JsonValue& element : *object.asArray()) {
    const JsonValue* const name = element.member("name");
    const JsonValue* const content = element.member("template");
    if (name == nullptr || name->asString() == nullptr || content == nullptr) return false;
    auto nameTemplate = templateOf(*content);
    if (!nameTemplate) return false;
    presets.push_back({*name->asString(), *std::move(nameTemplate)});
  }
  values.savedPresets = std::move(presets);
  return true;
}

std::optional<JsonValue> storeOverrides(const Values& values) {
  JsonValue::Object object;
  for (const auto& [id, name] : values.settings.naming.nameOverrides)
    object.emplace(id, JsonValue{name});
  return JsonValue{std::move(object)};
}

bool loadOverrides(Values& values, const JsonValue& object) {
  if (object.asObject() == nullptr) return false;
  decltype(Settings::Naming::nameOverrides) overrides;
  for (const auto& [id, name] : *object.asObject()) {
    if (name.asString() == nullptr) return false;
    overrides.emplace(id, *name.asString());
  }
  values.settings.naming.nameOverrides = std::move(overrides);
  return true;
}

template <auto byMode>
std::optional<JsonValue> storeMerges(const Values& values) {
  JsonValue::Object object;
  for (const auto& [mode, merges] : values.settings.gathering.*byMode) {
    JsonValue::Array lists;
    for (const auto& merge : merges) {
      JsonValue::Array ids;
      for (const std::string& id : merge) ids.push_back({id});
      lists.push_back({std::move(ids)});
    }
    object.emplace(mode, JsonValue{std::move(lists)});
  }
  return JsonValue{std::move(object)};
}

/// Adds a merge of one mode. Returns false if the object is not a list of texts.
bool addMerge(GroupMerges& merges, const JsonValue& object) {
  if (object.asArray() == nullptr) return false;
  auto& ids = merges.emplace_back();
  for (const JsonValue& id : *object.asArray()) {
    if (id.asString() == nullptr) return false;
    ids.push_back(*id.asString());
  }
  return true;
}

template <auto byMode>
bool loadMerges(Values& values, const JsonValue& object) {
  if (object.asObject() == nullptr) return false;
  Settings::Gathering::Merges mergesByMode;
  for (const auto& [mode, lists] : *object.asObject()) {
    if (lists.asArray() == nullptr) return false;
    GroupMerges& merges = mergesByMode[mode];
    for (const JsonValue& merge : *lists.asArray()) {
      if (!addMerge(merges, merge)) return false;
    }
  }
  values.settings.gathering.*byMode = std::move(mergesByMode);
  return true;
}

using S = Settings;

constexpr std::string_view homeKey = "manualHome";

template <auto byMode>
constexpr Key mergesKey(std::string_view name) {
  return {name, name, storeMerges<byMode>, loadMerges<byMode>};
}
template <auto field>
constexpr Key numberKey(std::string_view name) {
  return {name, name, storeNumber<field>, loadNumber<field>};
}
template <auto field>
constexpr Key countKey(std::string_view name) {
  return {name, name, storeCount<field>, loadCount<field>};
}
template <auto field>
constexpr Key flagKey(std::string_view name) {
  return {name, name, storeFlag<field>, loadFlag<field>};
}

constexpr std::array table{
    numberKey<&S::Gathering::eventGapHours>("eventGapHours"),
    numberKey<&S::Gathering::eventGapKm>("eventGapKm"),
    flagKey<&S::Gathering::splitByDistance>("splitByDistance"),
    numberKey<&S::Gathering::placeRadiusKm>("placeRadiusKm"),
    numberKey<&S::Gathering::tripDistanceKm>("tripDistanceKm"),
    countKey<&S::Gathering::tripMinDays>("tripMinDays"),
    numberKey<&S::Gathering::tripCityKm>("tripCityKm"),
    numberKey<&S::Gathering::tripMaxGapHours>("tripMaxGapHours"),
    countKey<&S::Gathering::homeWindowMonths>("homeWindowMonths"),
    Key{homeKey, "homeOverride", storeHome, loadHome},
    flagKey<&S::Naming::geocodingEnabled>("geocodingEnabled"),
    flagKey<&S::Content::skipOptimized>("skipOptimized"),
    flagKey<&S::Layout::continueFolders>("continueFolders"),
    flagKey<&S::Naming::severalCities>("severalCities"),
    flagKey<&S::Naming::wholeFolderDates>("wholeFolderDates"),
    flagKey<&S::Gathering::datesFromNames>("datesFromNames"),
    flagKey<&S::Gathering::cameraDays>("cameraDays"),
    flagKey<&S::Gathering::homePeriods>("homePeriods"),
    Key{"nameTemplate", "nameTemplate", storeTemplate, loadTemplate},
    Key{savedPresetsKey, "", storePresets, loadPresets},
    Key{"nameOverrides", "nameOverrides", storeOverrides, loadOverrides},
    mergesKey<&S::Gathering::mergesByMode>("mergesByMode"),
    mergesKey<&S::Gathering::rejectedSuggestions>("rejectedSuggestions"),
};

const Key* find(std::string_view name) {
  const auto* const found =
      std::find_if(table.begin(), table.end(), [&](const Key& key) { return key.name == name; });
  return found == table.end() ? nullptr : found;
}

constexpr std::array<std::string_view, 6> forgottenAlways{
    "photoJPEG", "jpegQuality", "videoH264", "packPerGroup", "packSingleArchive", "packAsZip"};
constexpr std::array<std::string_view, 4> forgottenOutsideDemo{
    "destinationBookmark", "mergeDistricts", "mergeSameNames", "flattenSingleKind"};

}  // namespace

const std::vector<std::string_view>& keys() {
  static const std::vector<std::string_view> names = [] {
    std::vector<std::string_view> result;
    for (const Key& key : table) result.push_back(key.name);
    return result;
  }();
  return names;
}

std::optional<std::string_view> keyOf(std::string_view setting) {
  if (setting == "homeOverrideName") return homeKey;
  for (const Key& key : table) {
    if (!setting.empty() && key.setting == setting) return key.name;
  }
  return std::nullopt;
}

Values read(const UserDefaults& defaults, Values initial) {
  for (const Key& key : table) {
    if (const auto object = defaults.object(key.name)) key.load(initial, *object);
  }
  return initial;
}

std::vector<SkippedObject> skipped(const UserDefaults& defaults) {
  std::vector<SkippedObject> result;
  Values values;
  for (const Key& key : table) {
    auto object = defaults.object(key.name);
    if (object && !key.load(values, *object)) {
      result.push_back({key.name, key.setting, *std::move(object)});
    }
  }
  return result;
}

bool isTaken(std::string_view key, const JsonValue& object) {
  const Key* const found = find(key);
  Values values;
  return found != nullptr && found->load(values, object);
}

std::optional<JsonValue> objectOf(std::string_view key, const Values& values) {
  const Key* const found = find(key);
  return found == nullptr ? std::nullopt : found->store(values);
}

DefaultsChanges changes(const Values& before, const Values& after) {
  DefaultsChanges changes;
  for (const Key& key : table) {
    auto object = key.store(after);
    if (object != key.store(before)) changes.emplace(key.name, std::move(object));
  }
  return changes;
}

void write(UserDefaults& defaults, const Values& before, const Values& after, bool isDemo) {
  if (isDemo) return;
  const DefaultsChanges changed = changes(before, after);
  if (!changed.empty()) defaults.apply(changed);
}

std::vector<std::string_view> forgottenKeys(bool isDemo) {
  std::vector<std::string_view> result{forgottenAlways.begin(), forgottenAlways.end()};
  if (!isDemo) {
    result.insert(result.end(), forgottenOutsideDemo.begin(), forgottenOutsideDemo.end());
  }
  return result;
}

void forgetAtLaunch(UserDefaults& defaults, bool isDemo) {
  DefaultsChanges removals;
  for (const std::string_view key : forgottenKeys(isDemo)) removals.emplace(key, std::nullopt);
  defaults.apply(removals);
}

std::optional<ManualHome> manualHome(const Settings& settings) {
  if (!settings.gathering.homeOverride) return std::nullopt;
  return ManualHome{settings.gathering.homeOverride->latitude,
                    settings.gathering.homeOverride->longitude,
                    settings.gathering.homeOverrideName};
}

Settings withManualHome(Settings settings, const std::optional<ManualHome>& home) {
  settings.gathering.homeOverride.reset();
  settings.gathering.homeOverrideName.reset();
  if (home) {
    settings.gathering.homeOverride = GeoPoint{home->latitude, home->longitude};
    settings.gathering.homeOverrideName = home->name;
  }
  return settings;
}

}  // namespace tavrix::PersistedSettings
