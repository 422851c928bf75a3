#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cli/call/Surroundings.h"
#include "cli/sessions/CommandContext.h"
#include "foundation/Sentence.h"
#include "settings/defaults/UserDefaults.h"

namespace tavrix::cli {

/// The key of the language in the user defaults, and what it may hold.
inline constexpr std::string_view languageKey = "uiLanguage";
bool isLanguageChoice(std::string_view text);
/// The language that the person keeps: "ru", "en" or "system"; nothing when none is kept.
std::optional<std::string> keptLanguage(const Surroundings& surroundings);

/// Tells on standard error what went wrong with the user defaults so far.
void tellDefaultsFaults(Language language, const Surroundings& surroundings);

/// The defaults of a command that changes them. Throws CommandFailure where there are none or the
/// call is a demo.
UserDefaults& changeableDefaults(const CommandContext& context);
/// Makes the changes. Throws CommandFailure when they were not stored.
void keep(const CommandContext& context, const DefaultsChanges& changes);

}  // namespace tavrix::cli
