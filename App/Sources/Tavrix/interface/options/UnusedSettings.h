#pragma once

#include <set>
#include <string_view>

#include "settings/Settings.h"

namespace tavrix::window {

/// Returns the keys of the settings that have no effect together with the others, whatever their
/// values. The keys are those of settingKeys().
std::set<std::string_view> unusedSettings(const Settings& settings);

}  // namespace tavrix::window
