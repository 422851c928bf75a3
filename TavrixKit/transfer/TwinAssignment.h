#pragma once

#include <absl/container/flat_hash_set.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/StringMap.h"
#include "media/MediaAsset.h"

namespace tavrix {

/// The assets of a plan.
struct PlannedAssets {
  StringMap<MediaAsset> byPath;
  absl::flat_hash_set<std::string_view> ids{};  ///< the texts are the assets' own

  void add(const std::string& path, const MediaAsset& asset) {
    byPath.emplace(path, asset);
    ids.insert(asset.id());
  }
};

/// Gives each path the asset whose copy it most probably is, where all have the same bytes: planned
/// at the path, at the path without its number, of the same name, without number (also where a long
/// name lost its end to it), without prefix; then any asset that has no copy yet, a planned one
/// first; at last any again, for more copies than assets. `assets`
/// must not be empty; those whose ids are `copied` have a copy elsewhere. The result has one for
/// each path, in their order.
std::vector<MediaAsset> assignTwins(const std::vector<std::string_view>& paths,
                                    const std::vector<MediaAsset>& assets,
                                    const PlannedAssets& planned, const StringSet& copied = {});

}  // namespace tavrix
