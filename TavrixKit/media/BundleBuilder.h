#pragma once

#include <optional>
#include <string>
#include <vector>

#include "media/AssetBundle.h"
#include "media/ParsedName.h"

namespace tavrix::BundleBuilder {

/// Groups all files of the catalogue into shots, in the order of their first files. Files of one
/// folder whose names have the same prefix and number are one shot. A file whose name has no camera
/// pattern is a shot of its own, and so is a film of another shot than the still of its name: one
/// whose content identifier differs from that of each unedited still that has one.
std::vector<AssetBundle> makeBundles(const std::vector<MediaAsset>& assets);

/// Returns one shot of the given files, or nullopt if there are none. The original is the first
/// unedited photo, otherwise the first unedited video, otherwise the first unedited file, otherwise
/// the first file.
std::optional<AssetBundle> bundle(std::string id, std::vector<MediaAsset> members);

}  // namespace tavrix::BundleBuilder
