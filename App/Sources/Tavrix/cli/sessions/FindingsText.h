#pragma once

#include "cli/sessions/CommandContext.h"
#include "runs/DestinationFindings.h"

namespace tavrix::cli {

/// Reports on standard error the folders and records of the destination that cannot be read, and
/// whether the source seems to be a card that was transferred there before under another identity.
void tellFindings(const CommandContext& context, const DestinationFindings& findings);
/// Reports on standard error if the destination has too little free space.
void tellSpace(const CommandContext& context, const DestinationFindings& findings);

}  // namespace tavrix::cli
