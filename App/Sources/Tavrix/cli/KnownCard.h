#pragma once

#include "cli/Commands.h"
#include "transfer/DestinationMarker.h"
#include "transfer/TransferPlan.h"

namespace tavrix::cli {

/// Tells on standard error when a folder that is new to the destination seems to be a card that was
/// transferred there before, from another path or under a name: at least half of the planned files
/// are recorded for it with their ids and sizes.
void tellKnownCard(const CommandContext& context, const DestinationMarker::Marker& marker,
                   const TransferPlan& plan);

}  // namespace tavrix::cli
