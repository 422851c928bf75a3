#pragma once

#include <string>

namespace tavrix::cli {

/// Return the completion of tavrix for a shell. All are made from the table of commands and the
/// settings: commands, options, keys of --set and their choices, and folders for SOURCE and DEST.
std::string bashCompletion();
std::string zshCompletion();
std::string fishCompletion();

}  // namespace tavrix::cli
