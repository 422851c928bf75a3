#include "cli/StoredSettings.h"

#include "StateFolder.h"
#include "cli/Quotes.h"
#include "cli/SettingsSentences.h"
#include "defaults/FileDefaults.h"
#include "foundation/Sentences.h"

namespace tavrix::cli {
namespace {

using Kind = DefaultsFault::Kind;

/// Of a file whose content does not count.
std::string damageText(Language language, const DefaultsFault& fault) {
  const std::string path = quoted(fault.path);
  if (!fault.position) return say(language, sentences::defaultsNoObject, path);
  return say(language, sentences::defaultsDamaged, path, fault.position->line,
             fault.position->column);
}

std::string faultText(Language language, const DefaultsFault& fault) {
  switch (fault.kind) {
    case Kind::damaged:
      return damageText(language, fault);
    case Kind::setAside:
      return say(language, sentences::defaultsSetAside, quoted(fault.keptAs));
    case Kind::unreadable:
      return say(language, sentences::defaultsUnreadable, quoted(fault.path),
                 tavrix::sentences::systemErrorText(language, fault.code));
    case Kind::unwritable:
      return say(language, sentences::defaultsNotSaved, quoted(fault.path),
                 tavrix::sentences::systemErrorText(language, fault.code));
    case Kind::busy:
      return say(language, sentences::defaultsBusy, quoted(fault.path));
    case Kind::tooLarge:
      return say(language, sentences::defaultsTooLarge, quoted(fault.path));
  }
  return {};
}

void tell(Language language, const Surroundings& surroundings, const DefaultsFault& fault) {
  surroundings.err.write("tavrix: " + faultText(language, fault) + '\n');
}

}  // namespace

bool isLanguageChoice(std::string_view text) {
  return text == "ru" || text == "en" || text == "system";
}

std::optional<std::string> keptLanguage(const Surroundings& surroundings) {
  if (surroundings.defaults == nullptr) return std::nullopt;
  auto language = surroundings.defaults->text(languageKey);
  if (language && !isLanguageChoice(*language)) return std::nullopt;
  return language;
}

bool keepsGroupsDebug(const Environment& environment) {
  return variable(environment, "DEBUG_SNAPSHOT") || variable(environment, "UI_SNAPSHOT_VIEWS");
}

std::optional<std::string> stateFolderOf(const Environment& environment,
                                         const std::optional<std::string>& chosen) {
  return stateFolderPath({.chosen = chosen,
                          .demo = variable(environment, "DEMO_STATE_DIR"),
                          .stateHome = variable(environment, "XDG_STATE_HOME"),
                          .home = variable(environment, "HOME"),
                          .isDemo = isDemo(environment)});
}

std::unique_ptr<UserDefaults> openDefaults(const Environment& environment) {
  if (const auto demo = variable(environment, "DEMO_STATE_DIR")) {
    return std::make_unique<FileDefaults>(*demo);
  }
  const auto folder =
      defaultsFolderPath(variable(environment, "XDG_CONFIG_HOME"), variable(environment, "HOME"));
  return folder ? std::make_unique<FileDefaults>(*folder) : nullptr;
}

bool isDemo(const Environment& environment) {
  return variable(environment, "DEMO_DIR").has_value();
}

void tellDefaultsFaults(Language language, const Surroundings& surroundings) {
  if (surroundings.defaults == nullptr) return;
  for (const DefaultsFault& fault : surroundings.defaults->takeFaults()) {
    tell(language, surroundings, fault);
  }
}

UserDefaults& changeableDefaults(const CommandContext& context) {
  const Surroundings& surroundings = context.surroundings;
  const auto fail = [&](const Sentence<>& sentence) {
    throw CommandFailure{ExitStatus::stopped, say(context.language(), sentence)};
  };
  if (isDemo(surroundings.environment)) fail(sentences::demoKeepsNothing);
  if (surroundings.defaults == nullptr) fail(sentences::defaultsPlaceUnknown);
  return *surroundings.defaults;
}

void keep(const CommandContext& context, const DefaultsChanges& changes) {
  UserDefaults& defaults = changeableDefaults(context);
  defaults.apply(changes);
  for (DefaultsFault fault : defaults.takeFaults()) {
    // A file that cannot be read takes no change either.
    if (fault.kind == Kind::unreadable) fault.kind = Kind::unwritable;
    if (losesChange(fault)) {
      throw CommandFailure{ExitStatus::stopped, faultText(context.language(), fault)};
    }
    tell(context.language(), context.surroundings, fault);
  }
}

}  // namespace tavrix::cli
