#pragma once

#include "cli/call/ExitStatus.h"

namespace tavrix::cli {

struct CommandContext;

/// The command `help`: prints the help of the program, or of the command or setting that the call
/// names. Throws CommandFailure if there is no such topic.
ExitStatus showHelp(const CommandContext& context);

}  // namespace tavrix::cli
