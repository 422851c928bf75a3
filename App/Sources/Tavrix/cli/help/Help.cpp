#include "cli/help/Help.h"

#include "cli/help/ChoiceHelpTexts.h"
#include "cli/help/HelpTexts.h"
#include "settings/SettingKeys.h"

namespace tavrix::cli {
namespace {

constexpr std::size_t lineColumns = 96;

/// Returns the keys of --set, wrapped at `lineColumns`.
std::string settingKeysText() {
  std::string text;
  std::string line = " ";
  for (const std::string_view key : settingKeys()) {
    if (line.size() + 1 + key.size() > lineColumns) {
      text += line + '\n';
      line = " ";
    }
    line.append(" ").append(key);
  }
  return text + line + '\n';
}

bool takesChoice(const help::HelpText* command) {
  return command == &help::groups || command == &help::plan || command == &help::transfer;
}

}  // namespace

std::string helpText(Language language, const help::HelpText* command) {
  const auto in = [&](const help::HelpText& text) {
    return std::string{language == Language::russian ? text.russian : text.english};
  };
  return in(command != nullptr ? *command : help::program) +
         (takesChoice(command) ? in(help::choice) : "") + in(help::commonOptions) +
         in(help::settingKeysTitle) + settingKeysText() +
         (command == nullptr ? in(help::otherLanguage) : "");
}

}  // namespace tavrix::cli
