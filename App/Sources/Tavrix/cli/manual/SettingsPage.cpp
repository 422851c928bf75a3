#include "cli/manual/SettingsPage.h"

#include <fmt/format.h>

#include "cli/manual/CommandFacts.h"

namespace tavrix::cli {
namespace {

constexpr std::string_view introduction = R"(# Settings

`--set KEY=VALUE` applies a setting to one call and can be repeated. The settings that are *kept* can also be saved for
all calls: `tavrix settings set KEY VALUE` ([user defaults](defaults.md)). `uiLanguage` is the only one that `--set` does
not accept; for one call, use `--lang`. `tavrix settings --all` prints this table in Russian or English, and
`tavrix help KEY` prints one setting.

`scripts/make-settings-page` writes this page from the program's own table.

| key | meaning | values | initially | kept |
| --- | --- | --- | --- | --- |
)";

std::string valuesCell(const SettingDescription& setting) {
  if (setting.form != SettingForm::choice) return valuesText(Language::english, setting);
  std::string cell;
  for (const std::string_view choice : setting.choices) {
    cell += fmt::format("{}`{}`", cell.empty() ? "" : ", ", choice);
  }
  return cell;
}

std::string initialCell(const SettingDescription& setting) {
  const std::string text = initialText(Language::english, setting);
  const bool isWords = !say(Language::english, setting.initialInWords).empty() || text == "—";
  return isWords ? text : fmt::format("`{}`", text);
}

}  // namespace

std::string settingsPage() {
  std::string page{introduction};
  for (const SettingDescription& setting : documentedSettings()) {
    page += fmt::format("| `{}` | {} | {} | {} | {} |\n", setting.key,
                        say(Language::english, setting.meaning), valuesCell(setting),
                        initialCell(setting), setting.isKept ? "yes" : "no");
  }
  return page;
}

}  // namespace tavrix::cli
