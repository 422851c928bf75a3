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

bool takesChoice(const help::HelpText* command) {
  return command == &help::groups || command == &help::plan || command == &help::transfer;
}

}  // namespace

std::string helpText(Language language, const help::HelpText* command) {
  const auto in = [&](const help::HelpText& text) {
    return std::string{language == Language::russian ? text.russian : text.english};
  };
  return laidOut(in(command != nullptr ? *command : help::program) +
                     (takesChoice(command) ? in(help::choice) : "") + in(help::commonOptions) +
                     in(help::settingKeysTitle),
                 helpColumns) +
         settingKeysText() + (command == nullptr ? in(help::otherLanguage) : "");
}

}  // namespace tavrix::cli
