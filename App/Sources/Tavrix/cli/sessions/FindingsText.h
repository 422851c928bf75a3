#pragma once

#include "cli/sessions/CommandContext.h"
#include "runs/RunFindings.h"

namespace tavrix::cli {

/// Tells on standard error of folders of the destination that cannot be read, and that the source
/// seems to be a card that was transferred there before, under another identity.
void tellFindings(const CommandContext& context, const RunFindings& findings);
/// Tells on standard error when there is not room enough.
void tellSpace(const CommandContext& context, const RunFindings& findings);

}  // namespace tavrix::cli
