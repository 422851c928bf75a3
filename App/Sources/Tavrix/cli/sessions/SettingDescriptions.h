#pragma once

#include <string_view>
#include <vector>

#include "cli/printing/SettingDescription.h"
#include "settings/PersistedSettings.h"
#include "settings/Settings.h"

namespace tavrix::cli {

/// Returns all settings in the order in which they are listed: those of settingKeys(), then the
/// language of messages. `initial` are the initial values on this machine.
std::vector<SettingDescription> describeSettings(const Settings& initial);

/// Returns the value of a setting that can be kept, in the form in which it is listed: true or
/// false instead of 1 or 0, and the home and its name apart. Returns nullopt if it has no value.
std::optional<JsonValue> keptValueOf(std::string_view name,
                                     const PersistedSettings::Values& values);

}  // namespace tavrix::cli
