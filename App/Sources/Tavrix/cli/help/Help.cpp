#include "cli/Help.h"

#include "SettingKeys.h"
#include "cli/HelpTexts.h"
#include "cli/PlacesHelpTexts.h"
#include "cli/SettingsHelpTexts.h"
#include "cli/VerifyHelpTexts.h"

namespace tavrix::cli {
namespace {

constexpr std::size_t lineColumns = 96;

const help::HelpText& textOf(std::optional<Command> command) {
  if (!command) return help::program;
  switch (*command) {
    case Command::catalog:
      return help::catalog;
    case Command::bundles:
      return help::bundles;
    case Command::groups:
      return help::groups;
    case Command::places:
      return help::places;
    case Command::geocacheReset:
      return help::geocache;
    case Command::plan:
      return help::plan;
    case Command::transfer:
      return help::transfer;
    case Command::history:
      return help::history;
    case Command::verify:
      return help::verify;
    case Command::markerRebuild:
      return help::marker;
    case Command::snapshot:
      return help::snapshot;
    case Command::phones:
      return help::phones;
    case Command::cacheReset:
    case Command::cache:
      return help::cache;
    case Command::templateRender:
    case Command::templatePresets:
    case Command::templateSanitize:
      return help::templates;
    case Command::settings:
    case Command::settingsSet:
    case Command::settingsReset:
      return help::settings;
    case Command::presets:
    case Command::presetsSave:
    case Command::presetsDelete:
      return help::presets;
  }
  return help::program;
}

/// The keys of --set in lines of ordinary width.
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

}  // namespace

std::string helpText(Language language, std::optional<Command> command) {
  const auto in = [&](const help::HelpText& text) {
    return std::string{language == Language::russian ? text.russian : text.english};
  };
  return in(textOf(command)) + in(help::commonOptions) + in(help::settingKeysTitle) +
         settingKeysText();
}

}  // namespace tavrix::cli
