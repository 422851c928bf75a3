#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/StringMap.h"
#include "media/MediaAsset.h"

namespace tavrix {

/// The asset that is planned at a path.
using PlannedAssets = StringMap<MediaAsset>;

/// Gives each path the asset whose copy it most probably is, where all have the same bytes: planned
/// at the path, at the path without its number, of the same name, without number, without prefix;
/// then any asset that has no copy yet; at last any again, for more copies than assets. `assets`
/// must not be empty; those whose ids are `copied` have a copy elsewhere. The result has one for
/// each path, in their order.
std::vector<MediaAsset> assignTwins(const std::vector<std::string_view>& paths,
                                    const std::vector<MediaAsset>& assets,
                                    const PlannedAssets& planned, const StringSet& copied = {});

}  // namespace tavrix
