#pragma once

#include "interface/options/ChoiceSetting.h"

namespace tavrix::window {

/// Returns the places that may be home, best first, with their days. The current one is the home
/// that the user has chosen, otherwise the one that was detected. A chosen home that is none of the
/// places is the first choice.
std::vector<ChoiceSetting::Choice> homeChoices(const SettingsPort& port);

/// Returns the homes with their days, a line each; an empty text if there is only one.
std::string homesText(const SettingsPort& port);

/// Returns the sentence about a home that is not certain, and an empty text otherwise.
std::string homeNote(const SettingsPort& port);

}  // namespace tavrix::window
