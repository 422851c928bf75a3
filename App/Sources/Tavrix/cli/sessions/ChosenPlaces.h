#pragma once

#include <vector>

#include "cli/sessions/CommandContext.h"
#include "media/AssetBundle.h"
#include "media/PlaceLookup.h"

namespace tavrix::cli {

/// Reports on standard error the chosen places (`--set places=…`) at which no shot was taken, with
/// the places that have the most files. Prints nothing if every chosen place has a shot. `bundles`
/// are the shots before any filter. If `lookup` is null, reports that choosing places needs names.
void tellUnknownPlaces(const CommandContext& context, const std::vector<AssetBundle>& bundles,
                       const PlaceLookup* lookup);

}  // namespace tavrix::cli
