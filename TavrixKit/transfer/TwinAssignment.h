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
  absl::flat_hash_set<std::string_view> ids{};  ///< views into the assets' own strings

  void add(const std::string& path, const MediaAsset& asset) {
    byPath.emplace(path, asset);
    ids.insert(asset.id());
  }
};

/// Assigns to each path the asset that it is most probably a copy of, if all assets have the same
/// bytes. The rules, in order: planned at the path; planned at the path without its number; of the
/// same name; of the name without its number (also if a long name was shortened for it); of the
/// name without its prefix; any asset that has no copy yet, planned ones first; at last, if there
/// are more copies than assets, an asset that has one. `assets` must not be empty; those whose ids
/// are in `copied` have a copy elsewhere. The result has one asset per path, in the order of the
/// paths.
std::vector<MediaAsset> assignTwins(const std::vector<std::string_view>& paths,
                                    const std::vector<MediaAsset>& assets,
                                    const PlannedAssets& planned, const StringSet& copied = {});

}  // namespace tavrix
