#include "media/BundleBuilder.h"

#include <absl/container/flat_hash_map.h>

#include <algorithm>

namespace tavrix::BundleBuilder {
namespace {

std::string bundleKey(const MediaAsset& asset) {
  std::string key;
  if (const auto parsed = parseName(asset.name())) {
    const std::string_view directory = asset.directory().value_or("");
    key.reserve(directory.size() + parsed->prefix.size() + parsed->number.size() + 2);
    key.append(directory).append("/").append(parsed->prefix).append("_").append(parsed->number);
  } else {
    key.append("asset:").append(asset.id());
  }
  return key;
}

template <typename Wanted>
const MediaAsset* firstUnedited(const std::vector<MediaAsset>& members, Wanted wanted) {
  const auto found = std::find_if(members.begin(), members.end(), [&](const MediaAsset& asset) {
    return !asset.isEditedVariant() && wanted(asset);
  });
  return found == members.end() ? nullptr : &*found;
}

const MediaAsset& originalOf(const std::vector<MediaAsset>& members) {
  const auto isPhoto = [](const MediaAsset& asset) { return asset.kind() == MediaKind::photo; };
  const auto isVideo = [](const MediaAsset& asset) { return asset.kind() == MediaKind::video; };
  if (const auto* photo = firstUnedited(members, isPhoto)) return *photo;
  if (const auto* video = firstUnedited(members, isVideo)) return *video;
  const auto* any = firstUnedited(members, [](const MediaAsset&) { return true; });
  return any == nullptr ? members.front() : *any;
}

struct Shot {
  std::string key;
  std::vector<MediaAsset> members;
};

}  // namespace

std::vector<AssetBundle> makeBundles(const std::vector<MediaAsset>& assets) {
  // Files of one shot lie close together, but nothing says how close.
  absl::flat_hash_map<std::string, std::uint32_t> positions;
  std::vector<Shot> shots;
  for (const MediaAsset& asset : assets) {
    std::string key = bundleKey(asset);
    const auto [found, isNew] =
        positions.try_emplace(std::move(key), static_cast<std::uint32_t>(shots.size()));
    if (isNew) shots.push_back({found->first, {}});
    shots[found->second].members.push_back(asset);
  }
  std::vector<AssetBundle> bundles;
  bundles.reserve(shots.size());
  for (Shot& shot : shots) bundles.push_back(*bundle(std::move(shot.key), std::move(shot.members)));
  return bundles;
}

std::optional<AssetBundle> bundle(std::string id, std::vector<MediaAsset> members) {
  if (members.empty()) return std::nullopt;
  members.shrink_to_fit();
  MediaAsset original = originalOf(members);
  return AssetBundle{std::move(id), std::move(members), std::move(original)};
}

}  // namespace tavrix::BundleBuilder
