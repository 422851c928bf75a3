#pragma once

#include <memory>

#include "PlaceNaming.h"
#include "cli/Commands.h"

namespace tavrix::cli {

/// What names the places of a call. Null where places are to have no names or nothing can name
/// them, which is told on standard error.
std::unique_ptr<PlaceNaming> placeNaming(const CommandContext& context);

}  // namespace tavrix::cli
