#pragma once

#include <memory>

#include "cli/sessions/CommandContext.h"
#include "library/PlaceNaming.h"

namespace tavrix::cli {

/// Opens the table of places. Returns nullptr if `geocodingEnabled` is off, if the program has no
/// table, or if the table cannot be opened, which is reported on standard error. If `usesCache` is
/// false, the cache of names is neither read nor written; if the state folder cannot be opened,
/// that is only logged. Throws CommandFailure as checkStateFolder() does.
std::unique_ptr<PlaceNaming> openPlaceNaming(const CommandContext& context, bool usesCache = true);

}  // namespace tavrix::cli
