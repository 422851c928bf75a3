#pragma once

#include <optional>
#include <string>
#include <vector>

#include "media/AssetBundle.h"
#include "media/ParsedName.h"

namespace tavrix::BundleBuilder {

/// Gathers the whole catalogue into shots, in the order in which each shot was first met. Files of
/// one folder whose names agree in prefix and number are one shot; a file without a camera pattern
/// is one by itself.
std::vector<AssetBundle> makeBundles(const std::vector<MediaAsset>& assets);

/// One shot of the given files; nothing when there are none. The original is the first unedited
/// photo, else the first unedited video, else the first unedited file, else the first.
std::optional<AssetBundle> bundle(std::string id, std::vector<MediaAsset> members);

}  // namespace tavrix::BundleBuilder
