#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cli/Commands.h"
#include "cli/Surroundings.h"
#include "defaults/UserDefaults.h"
#include "foundation/Sentence.h"

namespace tavrix::cli {

/// The key of the language in the user defaults, and what it may hold.
inline constexpr std::string_view languageKey = "uiLanguage";
bool isLanguageChoice(std::string_view text);
/// The language that the person keeps: "ru", "en" or "system"; nothing when none is kept.
std::optional<std::string> keptLanguage(const Surroundings& surroundings);

/// Whether what is chosen is only shown, and nothing of it kept.
bool isDemo(const Environment& environment);

/// Whether the folders on screen are written down for whoever looks into a fault.
bool keepsGroupsDebug(const Environment& environment);

/// Where state is kept, `chosen` for this call or as the environment has it; nothing where it names
/// no place.
std::optional<std::string> stateFolderOf(const Environment& environment,
                                         const std::optional<std::string>& chosen);

/// The user defaults where the environment places them, with the state of demos if that has a place
/// of its own; null where it names no place.
std::unique_ptr<UserDefaults> openDefaults(const Environment& environment);

/// Tells on standard error what went wrong with the user defaults so far.
void tellDefaultsFaults(Language language, const Surroundings& surroundings);

/// The defaults of a command that changes them. Throws CommandFailure where there are none or the
/// call is a demo.
UserDefaults& changeableDefaults(const CommandContext& context);
/// Makes the changes. Throws CommandFailure when they were not stored.
void keep(const CommandContext& context, const DefaultsChanges& changes);

}  // namespace tavrix::cli
