#pragma once

#include "interface/options/ChoiceSetting.h"

namespace tavrix::window {

/// Returns the built-in and the saved templates of folder names, each with the name that it gives
/// to the example folder: the first folder on screen that has a date and a place, or a made-up one
/// if there is none. A template of the user's own that was not saved is the last choice.
std::vector<ChoiceSetting::Choice> templateChoices(const SettingsPort& port);

/// Returns the name of the example folder by the present settings.
std::string exampleName(const SettingsPort& port);

}  // namespace tavrix::window
