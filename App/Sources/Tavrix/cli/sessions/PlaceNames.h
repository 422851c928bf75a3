#pragma once

#include <memory>

#include "cli/sessions/CommandContext.h"
#include "library/PlaceNaming.h"

namespace tavrix::cli {

/// Returns what names the places of a call. Returns nullptr if the settings want no names, or if
/// the table of places cannot be opened, which is reported on standard error. Unless `keepsNames`,
/// the cache of names is neither read nor written.
std::unique_ptr<PlaceNaming> placeNaming(const CommandContext& context, bool keepsNames = true);

}  // namespace tavrix::cli
