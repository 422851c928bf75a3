#pragma once

#include <string>

#include "foundation/Log.h"
#include "model/CheckMarks.h"
#include "model/DisplayGroup.h"
#include "settings/Settings.h"

namespace tavrix {

/// "groups-debug.json" in the state folder: the folders on screen with their merges, known counts
/// and members, for debugging. A failure is logged and otherwise ignored.
namespace GroupsDebug {

std::string encode(const DisplayGroups& groups, const CheckMarks& checks, const Settings& settings);
/// Replaces an existing file.
void write(const std::string& stateFolder, const DisplayGroups& groups, const CheckMarks& checks,
           const Settings& settings, Log& log);
void remove(const std::string& stateFolder, Log& log);

}  // namespace GroupsDebug

}  // namespace tavrix
