#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/sessions/CommandContext.h"
#include "grouping/PlaceTree.h"

namespace tavrix::cli {

/// The chosen names that no place of a library bears, in alphabetical order.
std::vector<std::string> unknownPlaces(const PlaceFilter& chosen, const PlaceTree& tree);

/// Tells on standard error of chosen places (`--set places=…`) that none of the shots, which are
/// those before any filter, was taken at, and what places there are. A null `lookup` names none.
void tellUnknownPlaces(const CommandContext& context, const std::vector<AssetBundle>& bundles,
                       const PlaceLookup* lookup);

}  // namespace tavrix::cli
