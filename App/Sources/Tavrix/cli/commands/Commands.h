#pragma once

#include "cli/call/ExitStatus.h"

namespace tavrix::cli {

struct CommandContext;

/// The commands. Each prints its result and returns the exit status. Each throws CommandFailure, or
/// an error that failureOf() turns into one, when it cannot go on.

ExitStatus listCatalog(const CommandContext& context);
ExitStatus listBundles(const CommandContext& context);
ExitStatus listGroups(const CommandContext& context);
ExitStatus listPlaces(const CommandContext& context);
ExitStatus resetPlaceNames(const CommandContext& context);
ExitStatus showPlan(const CommandContext& context);
ExitStatus transfer(const CommandContext& context);
ExitStatus showHistory(const CommandContext& context);
ExitStatus verify(const CommandContext& context);
ExitStatus repair(const CommandContext& context);
ExitStatus rebuildMarker(const CommandContext& context);
ExitStatus writeThumbnails(const CommandContext& context);
ExitStatus writeSnapshot(const CommandContext& context);
ExitStatus openWindow(const CommandContext& context);
ExitStatus listPhones(const CommandContext& context);
ExitStatus showCache(const CommandContext& context);
ExitStatus resetCache(const CommandContext& context);
ExitStatus renderTemplate(const CommandContext& context);
ExitStatus listPresets(const CommandContext& context);
ExitStatus sanitizeText(const CommandContext& context);
ExitStatus listSettings(const CommandContext& context);
ExitStatus setSetting(const CommandContext& context);
ExitStatus resetSettings(const CommandContext& context);
ExitStatus listTemplates(const CommandContext& context);
ExitStatus savePreset(const CommandContext& context);
ExitStatus deletePreset(const CommandContext& context);

}  // namespace tavrix::cli
