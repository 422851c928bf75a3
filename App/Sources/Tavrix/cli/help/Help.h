#pragma once

#include <optional>
#include <string>

#include "cli/CommandLine.h"

namespace tavrix::cli {

/// The help text of one command, or of the program.
std::string helpText(Language language, std::optional<Command> command);

}  // namespace tavrix::cli
