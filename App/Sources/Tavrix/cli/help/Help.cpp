#include "cli/help/Help.h"

#include "cli/call/Wrapping.h"
#include "cli/help/ChoiceHelpTexts.h"
#include "cli/help/HelpLayout.h"
#include "cli/help/HelpTexts.h"
#include "settings/SettingKeys.h"

namespace tavrix::cli {
namespace {

/// Returns the keys of --set, wrapped.
std::string settingKeysText() {
  std::string keys;
  for (const std::string_view key : settingKeys()) keys.append(keys.empty() ? "" : " ").append(key);
  std::string text;
  for (const std::string& line : wrapped(keys, helpColumns - 2)) text += "  " + line + '\n';
  return text;
}

std::string textIn(Language language, const help::HelpText& text) {
  return std::string{language == Language::russian ? text.russian : text.english};
}

bool takesChoice(const help::HelpText& command) {
  return &command == &help::groups || &command == &help::plan || &command == &help::transfer;
}

}  // namespace

std::string commandText(Language language, const help::HelpText& command) {
  return textIn(language, command) + (takesChoice(command) ? textIn(language, help::choice) : "");
}

std::string helpText(Language language, const help::HelpText* command) {
  const std::string text = commandText(language, command != nullptr ? *command : help::program) +
                           textIn(language, help::commonOptions) +
                           textIn(language, help::settingKeysTitle);
  return laidOut(text, helpColumns) + settingKeysText() +
         (command == nullptr ? textIn(language, help::otherLanguage) : "");
}

}  // namespace tavrix::cli
