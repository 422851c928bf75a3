#pragma once

#include <optional>
#include <string>

#include "foundation/Log.h"

namespace tavrix::window {

/// Returns the destination of the last run of a phone, by the history in a state folder. Returns
/// nullopt if there is none, or if that folder does not exist now. Reads files.
std::optional<std::string> lastDestination(const std::string& stateFolder,
                                           const std::string& phoneHash, Log& log);

}  // namespace tavrix::window
