#include "interface/options/TemplateChoices.h"

#include <algorithm>

#include "naming/NamePresets.h"
#include "naming/NameRendering.h"

namespace tavrix::window {
namespace {

using Choice = ChoiceSetting::Choice;

/// Returns the group of the folder whose name shows most, or nullptr if there are no folders.
const MediaGroup* exampleGroup(const AppState& state) {
  const auto& groups = *state.displayGroups;
  const auto isRich = [](const Shared<DisplayGroup>& each) {
    return each->group->dateStart && each->group->place;
  };
  const auto found = std::find_if(groups.begin(), groups.end(), isRich);
  if (found != groups.end()) return &*(*found)->group;
  return groups.empty() ? nullptr : &*groups.front()->group;
}

NameContext madeUpContext(const SettingsPort& port) {
  using namespace std::chrono;
  const Instant noon{sys_days{2026y / May / 16} + hours{12}};
  return {.dateStart = noon,
          .dateEnd = noon,
          .city = say(port.language(), sentences::exampleCity),
          .countryName = say(port.language(), sentences::exampleCountry),
          .countryCode = "IT",
          .eventName = {}};
}

std::string nameBy(const SettingsPort& port, const NameTemplate& nameTemplate) {
  const std::string localeID = port.language() == Language::russian ? "ru_RU" : "en_US";
  const MediaGroup* const group = exampleGroup(port.model().state());
  if (group == nullptr) {
    return NameRendering::render(nameTemplate, madeUpContext(port), localeID);
  }
  FolderNaming::Settings how = namingSettings(port.now(), port.systemLocaleID());
  how.nameTemplate = nameTemplate;
  how.overrides.clear();
  how.nameByGroupID = false;
  if (port.model().library()) how.places = port.model().library()->places;
  return FolderNaming::nameGroup(how, *group);
}

Choice choiceOf(const SettingsPort& port, std::string title, const NameTemplate& nameTemplate) {
  return {
      .title = std::move(title),
      .detail = nameBy(port, nameTemplate),
      .isCurrent = port.now().naming.nameTemplate == nameTemplate,
      .take = [nameTemplate](Settings& settings) { settings.naming.nameTemplate = nameTemplate; }};
}

}  // namespace

std::vector<Choice> templateChoices(const SettingsPort& port) {
  std::vector<Choice> choices;
  for (const NamePresets::Builtin& builtin : NamePresets::builtins()) {
    const auto title = port.language() == Language::russian ? builtin.russian : builtin.english;
    choices.push_back(choiceOf(port, std::string{title}, builtin.nameTemplate));
  }
  for (const SavedPreset& preset : *port.model().state().savedPresets) {
    choices.push_back(choiceOf(port, preset.name, preset.nameTemplate));
  }
  if (std::none_of(choices.begin(), choices.end(), std::mem_fn(&Choice::isCurrent))) {
    choices.push_back(choiceOf(port, say(port.language(), sentences::ownTemplate),
                               port.now().naming.nameTemplate));
  }
  return choices;
}

std::string exampleName(const SettingsPort& port) {
  return nameBy(port, port.now().naming.nameTemplate);
}

}  // namespace tavrix::window
