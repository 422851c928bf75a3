// The commands that show, change and reset the saved settings.

#include <algorithm>

#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/SettingsSentences.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/Failures.h"
#include "cli/sessions/SettingDescriptions.h"
#include "cli/sessions/StoredSettings.h"
#include "settings/PersistedSettings.h"
#include "settings/SettingKeys.h"
#include "settings/defaults/MemoryDefaults.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

using PersistedSettings::savedPresetsKey;

constexpr std::string_view homeName = "homeOverrideName";

/// Returns the names of the settings that can be saved, in the order of the list.
std::vector<std::string_view> keptSettings() {
  std::vector<std::string_view> names = settingKeys();
  std::erase_if(names, [](std::string_view name) { return !PersistedSettings::keyOf(name); });
  names.push_back(languageKey);
  return names;
}

/// Returns true if the defaults hold a valid value for the setting.
bool isSet(const UserDefaults& defaults, std::string_view name) {
  const auto key = PersistedSettings::keyOf(name).value_or("");
  const auto object = defaults.object(key);
  if (!object || !PersistedSettings::isTaken(key, *object)) return false;
  const JsonValue* const typedName = object->member("name");
  return name != homeName || (typedName != nullptr && !typedName->isNull());
}

KeptSetting keptSetting(const CommandContext& context, const UserDefaults& defaults,
                        std::string_view name) {
  if (name == languageKey) {
    const auto language = keptLanguage(context.surroundings.defaults);
    return {std::string{name}, JsonValue{language.value_or(std::string{initialLanguage})},
            !language};
  }
  return {std::string{name}, keptValueOf(name, PersistedSettings::read(defaults, {})),
          !isSet(defaults, name)};
}

void print(const CommandContext& context, const std::vector<std::string_view>& names) {
  const MemoryDefaults none;
  const UserDefaults* const kept = context.surroundings.defaults;
  const UserDefaults& defaults = kept == nullptr ? none : *kept;
  std::vector<KeptSetting> settings;
  for (const std::string_view name : names) {
    settings.push_back(keptSetting(context, defaults, name));
  }
  context.printer.settings(settings);
}

/// Throws CommandFailure if `name` is not a setting that can be saved.
void checkIsKept(Language language, const std::string& name) {
  const auto kept = keptSettings();
  if (std::find(kept.begin(), kept.end(), name) != kept.end()) return;
  if (settingForm(name)) failUsage(say(language, sentences::countsForOneCall, name));
  failUsage(say(language, sentences::keptUnknownKey, forSentence(name), joined(kept)));
}

struct Assignment {
  std::string name;
  std::string value;
};

/// Returns the assignment in the operands, "KEY VALUE" or "KEY=VALUE". Throws CommandFailure.
Assignment assignmentOf(const CommandContext& context) {
  const auto& operands = context.call.operands;
  if (operands.size() == 2) return {operands[0], operands[1]};
  const auto equals = operands[0].find('=');
  if (equals == std::string::npos) {
    checkIsKept(context.language(), operands[0]);
    failUsage(say(context.language(), sentences::keptNotAssignment, forSentence(operands[0])));
  }
  return {operands[0].substr(0, equals), operands[0].substr(equals + 1)};
}

/// Returns the change that stores a new value. Throws CommandFailure if the value is wrong.
DefaultsChanges changeTo(const CommandContext& context, const UserDefaults& defaults,
                         const Assignment& assignment) {
  const Language language = context.language();
  auto values = PersistedSettings::read(defaults, {});
  auto changed =
      withSetting(values.settings, assignment.name + "=" + assignment.value, values.savedPresets);
  if (const auto* const error = std::get_if<SettingError>(&changed)) {
    throw settingFailure(language, *error);
  }
  values.settings = std::get<Settings>(std::move(changed));
  if (assignment.name == homeName && !values.settings.gathering.homeOverride) {
    failUsage(say(language, sentences::homeNameWithoutHome));
  }
  const auto key = *PersistedSettings::keyOf(assignment.name);
  return {{std::string{key}, PersistedSettings::objectOf(key, values)}};
}

DefaultsChanges languageChange(const CommandContext& context, const std::string& value) {
  if (!isLanguageChoice(value)) {
    failUsage(say(context.language(), sentences::settingBadValue, languageKey, forSentence(value),
                  joined({languageChoices.begin(), languageChoices.end()})));
  }
  return {{std::string{languageKey}, JsonValue{value}}};
}

DefaultsChanges removal(const UserDefaults& defaults, std::string_view name) {
  if (name == homeName) {
    auto values = PersistedSettings::read(defaults, {});
    values.settings.gathering.homeOverrideName.reset();
    const auto key = *PersistedSettings::keyOf(name);
    return {{std::string{key}, PersistedSettings::objectOf(key, values)}};
  }
  return {{std::string{PersistedSettings::keyOf(name).value_or(name)}, std::nullopt}};
}

/// Returns the names of the settings to reset. Throws CommandFailure.
std::vector<std::string_view> resetNames(const CommandContext& context) {
  const auto& operands = context.call.operands;
  if (context.call.resetsAll) {
    if (operands.empty()) return keptSettings();
    failUsage(say(context.language(), sentences::resetNamesBoth, forSentence(operands[0])));
  }
  if (operands.empty()) failUsage(say(context.language(), sentences::resetNamesNothing));
  if (operands[0] != savedPresetsKey) checkIsKept(context.language(), operands[0]);
  return {operands[0]};
}

}  // namespace

ExitStatus listSettings(const CommandContext& context) {
  if (context.call.describesAll) {
    context.printer.allSettings(describeSettings(initialSettings(context.surroundings)));
    return ExitStatus::done;
  }
  print(context, keptSettings());
  return ExitStatus::done;
}

ExitStatus setSetting(const CommandContext& context) {
  const Assignment assignment = assignmentOf(context);
  const Language language = context.language();
  if (assignment.name == savedPresetsKey)
    failUsage(say(language, sentences::savedPresetsElsewhere));
  checkIsKept(language, assignment.name);
  UserDefaults& defaults = changeableDefaults(context);
  keep(context, assignment.name == languageKey ? languageChange(context, assignment.value)
                                               : changeTo(context, defaults, assignment));
  print(context, {assignment.name});
  return ExitStatus::done;
}

ExitStatus resetSettings(const CommandContext& context) {
  const auto names = resetNames(context);
  UserDefaults& defaults = changeableDefaults(context);
  DefaultsChanges changes;
  for (const std::string_view name : names) {
    // Resetting the home also resets its name.
    if (names.size() > 1 && name == homeName) continue;
    changes.merge(removal(defaults, name));
  }
  keep(context, changes);
  if (names.front() == savedPresetsKey) {
    context.printer.templatesForgotten(NamePresets::builtins());
  } else {
    print(context, names);
  }
  return ExitStatus::done;
}

}  // namespace tavrix::cli
