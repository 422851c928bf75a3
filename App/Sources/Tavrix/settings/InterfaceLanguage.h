#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/Sentence.h"
#include "settings/defaults/UserDefaults.h"

namespace tavrix {

/// The key of the language in the user defaults.
inline constexpr std::string_view languageKey = "uiLanguage";
/// The values of that key, and the one that applies if none is kept.
inline constexpr std::array<std::string_view, 3> languageChoices{"ru", "en", "system"};
inline constexpr std::string_view initialLanguage = "system";

/// Returns true if `text` is a value of that key.
bool isLanguageChoice(std::string_view text);
/// Returns the language that the user keeps: "ru", "en" or "system". Returns nullopt if none is
/// kept or its value is invalid. `defaults` may be null.
std::optional<std::string> keptLanguage(const UserDefaults* defaults);
/// Returns the language for a choice; "system" stands for the language of the locale.
Language languageOfChoice(std::string_view choice, std::string_view localeID);

}  // namespace tavrix
