// The commands for templates of folder names, built-in and saved.

#include <algorithm>

#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/SettingsSentences.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/StoredSettings.h"
#include "cli/sessions/TemplateFaults.h"
#include "foundation/Text.h"
#include "naming/NamePresets.h"
#include "settings/PersistedSettings.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

using PersistedSettings::savedPresetsKey;
using Presets = std::vector<SavedPreset>;

/// Returns the saved presets for a change. Throws CommandFailure if they cannot be read, since
/// writing the change would lose them.
Presets changeablePresets(const CommandContext& context) {
  const UserDefaults& defaults = changeableDefaults(context);
  const auto object = defaults.object(savedPresetsKey);
  if (object && !PersistedSettings::isTaken(savedPresetsKey, *object)) {
    throw CommandFailure{ExitStatus::stopped,
                         say(context.language(), sentences::presetsUnreadable)};
  }
  return keptPresets(context.surroundings);
}

void keepPresets(const CommandContext& context, Presets presets) {
  PersistedSettings::Values values;
  values.savedPresets = std::move(presets);
  keep(context,
       {{std::string{savedPresetsKey}, PersistedSettings::objectOf(savedPresetsKey, values)}});
}

/// Ignores letter case, as naming a template by its title does.
bool isBuiltin(const std::string& name) {
  const std::string folded = caseFolded(name);
  const auto& builtins = NamePresets::builtins();
  return std::any_of(builtins.begin(), builtins.end(), [&](const NamePresets::Builtin& builtin) {
    return caseFolded(builtin.russian) == folded || caseFolded(builtin.english) == folded;
  });
}

Presets::iterator find(Presets& presets, const std::string& name) {
  return std::find_if(presets.begin(), presets.end(),
                      [&](const SavedPreset& preset) { return preset.name == name; });
}

/// Returns the name of the preset in the form in which it will be read back.
std::string nameOf(const CommandContext& context) {
  return replacingInvalidUtf8(trimmedWhiteSpace(context.call.operands.at(0)));
}

}  // namespace

ExitStatus listTemplates(const CommandContext& context) {
  context.printer.templates(NamePresets::builtins(), keptPresets(context.surroundings),
                            context.surroundings.systemLocaleID);
  return ExitStatus::done;
}

ExitStatus savePreset(const CommandContext& context) {
  const Language language = context.language();
  const SavedPreset preset{nameOf(context), readTemplate(language, context.call.operands.at(1),
                                                         keptPresets(context.surroundings))};
  if (preset.name.empty()) failUsage(say(language, sentences::presetNameEmpty));
  if (isBuiltin(preset.name)) {
    failUsage(say(language, sentences::presetNameTaken, forSentence(preset.name)));
  }
  Presets presets = changeablePresets(context);
  if (const auto found = find(presets, preset.name); found != presets.end()) {
    *found = preset;
  } else {
    presets.push_back(preset);
  }
  keepPresets(context, presets);
  context.printer.templateSaved(NamePresets::builtins(), presets, preset,
                                context.surroundings.systemLocaleID);
  return ExitStatus::done;
}

ExitStatus deletePreset(const CommandContext& context) {
  const std::string name = nameOf(context);
  Presets presets = changeablePresets(context);
  const auto found = find(presets, name);
  if (found == presets.end()) {
    failUsage(say(context.language(),
                  isBuiltin(name) ? sentences::presetIsBuiltin : sentences::presetUnknown,
                  forSentence(name)));
  }
  presets.erase(found);
  keepPresets(context, std::move(presets));
  context.printer.templateDeleted(name);
  return ExitStatus::done;
}

}  // namespace tavrix::cli
