#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/Sentence.h"
#include "foundation/json/JsonValue.h"
#include "settings/SettingKeys.h"

namespace tavrix::cli {

/// A setting as it is explained to the user.
struct SettingDescription {
  std::string key;
  Sentence<> meaning;
  SettingForm form = SettingForm::text;
  std::vector<std::string_view> choices{};  ///< all values, if there are only a few
  std::optional<JsonValue> initial{};       ///< nullopt if it has no value at first
  Sentence<> initialInWords{"", ""};        ///< empty if the value itself is shown
  bool isKept = false;                      ///< `settings set` can save it
  bool isForOneCall = true;                 ///< `--set` accepts it
};

/// Returns the values that a setting accepts in words. `choices` are the words of a `choice`.
std::string allowedValues(Language language, SettingForm form,
                          const std::vector<std::string_view>& choices);

/// Return the accepted values and the initial value in words: "true or false"; "4", "—".
std::string valuesText(Language language, const SettingDescription& setting);
std::string initialText(Language language, const SettingDescription& setting);

/// Returns a value in the form that `settings set` accepts, "—" if there is none.
std::string settingValueText(std::string_view key, const std::optional<JsonValue>& value);

/// Returns what `tavrix help KEY` says on a setting: pairs of a label and a text.
std::vector<std::pair<std::string, std::string>> settingRows(Language language,
                                                             const SettingDescription& setting);

}  // namespace tavrix::cli
