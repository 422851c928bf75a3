#pragma once

#include <memory>

#include "cli/sessions/CommandContext.h"
#include "library/PlaceNaming.h"

namespace tavrix::cli {

/// Opens the table of places. Returns nullptr if `geocodingEnabled` is off, if the program has no
/// table, or if the table cannot be opened, which tellPlacesFault() reports. If `usesCache` is
/// false, the cache of names is neither read nor written; if the state folder cannot be opened,
/// that is only logged. Throws CommandFailure as checkStateFolder() does.
std::unique_ptr<PlaceNaming> openPlaceNaming(const CommandContext& context, bool usesCache = true);
/// Reports why the table of places could not be opened, once.
void tellPlacesFault(const CommandContext& context);

}  // namespace tavrix::cli
