#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/sessions/CommandContext.h"
#include "grouping/PlaceTree.h"

namespace tavrix::cli {

/// Returns the chosen names that no place in the tree has, in alphabetical order.
std::vector<std::string> unknownPlaces(const PlaceFilter& chosen, const PlaceTree& tree);

/// Reports on standard error the chosen places (`--set places=…`) at which no shot was taken, and
/// the places that exist. `bundles` are the shots before any filter. A null `lookup` means that
/// places have no names.
void tellUnknownPlaces(const CommandContext& context, const std::vector<AssetBundle>& bundles,
                       const PlaceLookup* lookup);

}  // namespace tavrix::cli
