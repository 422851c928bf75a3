#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Settings.h"
#include "naming/NameTemplateCoding.h"

namespace tavrix {

/// The greatest value of a setting that counts days or months.
inline constexpr int largestSettingCount = 10000;

/// What texts a setting takes.
enum class SettingForm {
  boolean,       ///< true or false
  choice,        ///< one of a few words
  atLeastZero,   ///< a finite number, 0 or more
  fraction,      ///< 0 to 1
  count,         ///< a whole number from 0 to 10000
  day,           ///< 2026-05-20
  timeZone,      ///< an identifier of the tz database
  point,         ///< latitude and longitude in degrees: 55.75,37.62
  text,          ///< anything
  nameTemplate,  ///< the persisted JSON of a template
  textMap,       ///< a JSON object whose values are texts
  places,        ///< names of countries and cities, or the JSON object of a place filter
  merges,        ///< a JSON object whose values are lists of lists of texts
};

/// Why "KEY=VALUE" set nothing.
struct SettingError {
  enum class Kind { notAssignment, unknownKey, badValue };

  Kind kind = Kind::badValue;
  std::string key;  ///< the whole text for `notAssignment`
  std::string value{};
  SettingForm form = SettingForm::text;          ///< of the key, for `badValue`
  std::vector<std::string_view> choices{};       ///< the words of a `choice`
  std::optional<NameTemplateError> template_{};  ///< what is wrong with a template
};

/// Every key in the order in which they are listed for people.
std::vector<std::string_view> settingKeys();

/// The form of a key; nothing when there is no such key.
std::optional<SettingForm> settingForm(std::string_view key);

/// The settings with one of them set by a text "KEY=VALUE".
std::variant<Settings, SettingError> withSetting(Settings settings, std::string_view assignment);

}  // namespace tavrix
