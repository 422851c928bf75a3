#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "foundation/json/JsonValue.h"
#include "settings/GivenTemplate.h"
#include "settings/Settings.h"

namespace tavrix {

/// The largest value of a setting in days or months.
inline constexpr int largestSettingCount = 10000;

/// The texts that a setting accepts.
enum class SettingForm {
  boolean,       ///< true or false
  choice,        ///< one of a few words
  atLeastZero,   ///< a finite number, 0 or more
  fraction,      ///< 0 to 1
  count,         ///< a whole number from 0 to 10000
  day,           ///< 2026-05-20
  timeZone,      ///< an identifier of the tz database
  point,         ///< latitude and longitude in degrees, "55.75,37.62" or "55.75, 37.62"
  text,          ///< anything
  nameTemplate,  ///< a template as givenTemplate() reads it
  textMap,       ///< a JSON object whose values are texts
  places,        ///< names of countries and cities, or the JSON object of a place filter
  merges,        ///< a JSON object whose values are lists of lists of texts
};

/// Why "KEY=VALUE" was rejected.
struct SettingError {
  enum class Kind { notAssignment, unknownKey, badValue };

  Kind kind = Kind::badValue;
  std::string key;  ///< the whole text if the kind is `notAssignment`
  std::string value{};
  SettingForm form = SettingForm::text;      ///< the form of the key, for `badValue`
  std::vector<std::string_view> choices{};   ///< the words of a `choice`
  std::optional<TemplateFault> template_{};  ///< what is wrong with a template
};

/// Returns all keys in the order in which they are listed for the user.
std::vector<std::string_view> settingKeys();

/// Returns the form of a key. Returns nullopt if there is no such key.
std::optional<SettingForm> settingForm(std::string_view key);

/// Returns the words that a key of the form `choice` accepts, otherwise an empty list.
std::vector<std::string_view> settingChoices(std::string_view key);

/// Returns the value of a switch, a number, a word or a text. Returns nullopt if there is no such
/// key, if it has no value, or if its form is a day, a point or JSON data.
std::optional<JsonValue> settingValue(const Settings& settings, std::string_view key);

/// Returns the settings changed by a text "KEY=VALUE", or the reason for rejecting it. A name
/// template may be given by the title of one of the saved presets.
std::variant<Settings, SettingError> withSetting(Settings settings, std::string_view assignment,
                                                 const std::vector<SavedPreset>& saved = {});

}  // namespace tavrix
