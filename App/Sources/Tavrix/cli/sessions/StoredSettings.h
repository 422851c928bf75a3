#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "cli/call/Surroundings.h"
#include "cli/sessions/CommandContext.h"
#include "foundation/Sentence.h"
#include "settings/SavedPreset.h"
#include "settings/Settings.h"
#include "settings/defaults/UserDefaults.h"

namespace tavrix::cli {

/// The key of the language in the user defaults.
inline constexpr std::string_view languageKey = "uiLanguage";
/// The values of that key, and the one that applies if none is kept.
inline constexpr std::array<std::string_view, 3> languageChoices{"ru", "en", "system"};
inline constexpr std::string_view initialLanguage = "system";
/// Returns true if `text` is a value of that key.
bool isLanguageChoice(std::string_view text);
/// Returns the language that the user keeps: "ru", "en" or "system". Returns nullopt if none is
/// kept or its value is invalid.
std::optional<std::string> keptLanguage(const Surroundings& surroundings);

/// Returns the presets that the user has saved.
std::vector<SavedPreset> keptPresets(const Surroundings& surroundings);

/// Returns the initial values of all settings on this machine.
Settings initialSettings(const Surroundings& surroundings);

/// Reports on standard error the faults of the user defaults since the last report.
void tellDefaultsFaults(const Surroundings& surroundings, const Messages& messages);

/// Returns the defaults for a command that changes them. Throws CommandFailure if there are none or
/// the call is a demo.
UserDefaults& changeableDefaults(const CommandContext& context);
/// Makes the changes. Throws CommandFailure if they could not be stored.
void keep(const CommandContext& context, const DefaultsChanges& changes);

}  // namespace tavrix::cli
