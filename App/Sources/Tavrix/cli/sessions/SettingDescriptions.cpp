#include "cli/sessions/SettingDescriptions.h"

#include <algorithm>

#include "cli/sentences/SettingMeanings.h"
#include "cli/sessions/StoredSettings.h"

namespace tavrix::cli {
namespace {

constexpr std::string_view homeName = "homeOverrideName";

SettingDescription describe(std::string_view key, const Settings& initial) {
  const SettingForm form = settingForm(key).value_or(SettingForm::text);
  SettingDescription setting{.key = std::string{key}, .meaning{"", ""}, .form = form};
  setting.choices = settingChoices(key);
  if (form == SettingForm::boolean) setting.choices = {"true", "false"};
  setting.isKept = PersistedSettings::keyOf(key).has_value();
  setting.initial = settingValue(initial, key);
  if (!setting.initial && setting.isKept) setting.initial = keptValueOf(key, {initial, {}});
  return setting;
}

SettingDescription describeLanguage() {
  return {.key = std::string{languageKey},
          .meaning{"", ""},
          .form = SettingForm::choice,
          .choices{languageChoices.begin(), languageChoices.end()},
          .initial = JsonValue{std::string{initialLanguage}},
          .isKept = true,
          .isForOneCall = false};
}

void addMeaning(SettingDescription& setting) {
  const auto& all = sentences::settingMeanings;
  const auto* const found =
      std::ranges::find(all, std::string_view{setting.key}, &sentences::SettingMeaning::key);
  if (found == all.end()) return;
  setting.meaning = found->meaning;
  setting.initialInWords = found->initial;
}

}  // namespace

std::vector<SettingDescription> describeSettings(const Settings& initial) {
  std::vector<SettingDescription> settings;
  for (const std::string_view key : settingKeys()) settings.push_back(describe(key, initial));
  settings.push_back(describeLanguage());
  for (SettingDescription& setting : settings) addMeaning(setting);
  return settings;
}

std::optional<JsonValue> keptValueOf(std::string_view name,
                                     const PersistedSettings::Values& values) {
  auto object = PersistedSettings::objectOf(PersistedSettings::keyOf(name).value_or(""), values);
  if (!object) return std::nullopt;
  if (settingForm(name) == SettingForm::boolean) return JsonValue{object->asNumber() == 1};
  const JsonValue* const typedName = object->member("name");
  if (name == homeName) return typedName == nullptr ? std::nullopt : std::optional{*typedName};
  if (auto* const home = std::get_if<JsonValue::Object>(&object->data);
      home != nullptr && name == "homeOverride") {
    home->erase("name");
  }
  return object;
}

}  // namespace tavrix::cli
