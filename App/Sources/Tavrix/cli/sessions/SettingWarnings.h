#pragma once

#include <vector>

#include "cli/sessions/CommandContext.h"
#include "naming/FolderNaming.h"

namespace tavrix::cli {

/// Returns true if the call sets the setting by --set.
bool sets(const Invocation& call, std::string_view key);

/// Throws CommandFailure if the period ends before it begins.
void checkPeriod(const Invocation& call, const Settings& settings);

/// Reports on standard error the settings of the call that have no effect (idleSettings()). `rows`
/// are the folders of the call.
void tellIdleSettings(const CommandContext& context, const std::vector<FolderNaming::Row>& rows);

/// Reports on standard error each value in the user defaults in whose place the initial value
/// applies.
void tellSkippedDefaults(const Surroundings& surroundings, const Messages& messages);

/// Reports on standard error that the variable TZ names no known zone, unless the call or the demo
/// chooses the zone.
void tellUnknownTimeZone(const Invocation& call, const Surroundings& surroundings,
                         const Messages& messages);

}  // namespace tavrix::cli
