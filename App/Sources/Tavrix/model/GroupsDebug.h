#pragma once

#include <string>

#include "Settings.h"
#include "foundation/Log.h"
#include "model/DisplayGroup.h"

namespace tavrix {

/// "groups-debug.json" in the state folder: the folders on screen with their merges, known counts
/// and members, for whoever looks for a fault. A failure is logged and does no harm.
namespace GroupsDebug {

std::string encode(const DisplayGroups& groups, const Settings& settings);
/// Replaces what is there.
void write(const std::string& stateFolder, const DisplayGroups& groups, const Settings& settings,
           Log& log);
void remove(const std::string& stateFolder, Log& log);

}  // namespace GroupsDebug

}  // namespace tavrix
