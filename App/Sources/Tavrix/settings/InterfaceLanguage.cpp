#include "settings/InterfaceLanguage.h"

#include <algorithm>

namespace tavrix {

bool isLanguageChoice(std::string_view text) {
  return std::ranges::find(languageChoices, text) != languageChoices.end();
}

std::optional<std::string> keptLanguage(const UserDefaults* defaults) {
  if (defaults == nullptr) return std::nullopt;
  auto language = defaults->text(languageKey);
  if (language && !isLanguageChoice(*language)) return std::nullopt;
  return language;
}

Language languageOfChoice(std::string_view choice, std::string_view localeID) {
  if (choice == "en") return Language::english;
  return choice == "system" ? languageOfLocale(localeID) : Language::russian;
}

}  // namespace tavrix
