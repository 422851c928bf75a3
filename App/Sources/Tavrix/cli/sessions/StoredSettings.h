#pragma once

#include <memory>
#include <string>

#include "cli/call/Surroundings.h"
#include "cli/sessions/CommandContext.h"
#include "foundation/Sentence.h"
#include "settings/InterfaceLanguage.h"
#include "settings/SavedPreset.h"
#include "settings/Settings.h"
#include "settings/defaults/UserDefaults.h"

namespace tavrix::cli {

/// Returns the presets that the user has saved.
std::vector<SavedPreset> keptPresets(const Surroundings& surroundings);

/// Returns the initial values of all settings on this machine.
Settings initialSettings(const Surroundings& surroundings);

/// Reports on standard error the faults of the user defaults since the last report.
void tellDefaultsFaults(const Surroundings& surroundings, const Messages& messages);

/// Returns the defaults for a command that changes them. Throws CommandFailure if there are none or
/// the call is a demo.
UserDefaults& changeableDefaults(const CommandContext& context);
/// Makes the changes. Throws CommandFailure if they could not be stored.
void keep(const CommandContext& context, const DefaultsChanges& changes);

}  // namespace tavrix::cli
