#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "settings/defaults/UserDefaults.h"

namespace tavrix {

/// The variables of the environment that the program uses, by name.
using Environment = std::map<std::string, std::string, std::less<>>;

/// The names of those variables.
inline constexpr std::string_view usedVariables[] = {
    "DEMO_DIR",
    "DEMO_STATE_DIR",
    "DEMO_TIME_ZONE",
    "DEMO_MODE",
    "DEMO_DEVICE_NAME",
    "DEBUG_SNAPSHOT",
    "UI_SNAPSHOT_VIEWS",
    "SNAPSHOT_OUT",
    "XDG_STATE_HOME",
    "XDG_CONFIG_HOME",
    "XDG_CACHE_HOME",
    "HOME",
    "TERM",
    "TZ",
};

/// Returns the used variables of the process that are set.
Environment processEnvironment();

/// Returns the value of a variable, or nullopt if it is not set or empty.
std::optional<std::string> variable(const Environment& environment, std::string_view name);

/// Returns true in a demo, in which choices are shown but not kept.
bool isDemo(const Environment& environment);

/// Returns true if the folders on screen are to be written to a file for debugging.
bool keepsGroupsDebug(const Environment& environment);

/// Returns the state folder: `chosen` by the user for this call, or the one that the environment
/// gives. Returns nullopt if neither names one.
std::optional<std::string> stateFolderOf(const Environment& environment,
                                         const std::optional<std::string>& chosen);

/// Returns the folder of the kept thumbnails: in the cache folder of the user, or, if a state
/// folder was `chosen` or a demo has one of its own, in that. Returns nullopt if the environment
/// names none, or in a demo that keeps nothing of its own.
std::optional<std::string> thumbnailFolderOf(const Environment& environment,
                                             const std::optional<std::string>& chosen);

/// Opens the user defaults where the environment places them; a demo with a state folder of its own
/// has its own defaults. Returns nullptr if the environment names no place.
std::unique_ptr<UserDefaults> openDefaults(const Environment& environment);

}  // namespace tavrix
