#include "media/BundleBuilder.h"

#include <absl/container/flat_hash_map.h>

#include <algorithm>
#include <deque>

namespace tavrix::BundleBuilder {
namespace {

void setBundleKey(std::string& key, const MediaAsset& asset) {
  key.clear();
  if (const auto parsed = parseName(asset.name())) {
    key.append(asset.directory().value_or(""))
        .append("/")
        .append(parsed->prefix)
        .append("_")
        .append(parsed->number);
  } else {
    key.append("asset:").append(asset.id());
  }
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

/// The shot of each asset. Shots are numbered in the order of their first assets.
struct Shots {
  std::deque<std::string> keys;
  std::vector<std::uint32_t> shotOfAsset;
  std::vector<std::uint32_t> sizes;
};

Shots findShots(const std::vector<MediaAsset>& assets) {
  Shots shots;
  shots.shotOfAsset.reserve(assets.size());
  absl::flat_hash_map<std::string_view, std::uint32_t> shotOfKey;
  std::string key;
  for (const MediaAsset& asset : assets) {
    setBundleKey(key, asset);
    // Files of one shot usually follow each other, but this is not guaranteed.
    std::uint32_t shot = shots.shotOfAsset.empty() ? 0 : shots.shotOfAsset.back();
    if (shots.keys.empty() || shots.keys[shot] != key) {
      auto found = shotOfKey.find(key);
      if (found == shotOfKey.end()) {
        found = shotOfKey
                    .emplace(shots.keys.emplace_back(key),
                             static_cast<std::uint32_t>(shots.sizes.size()))
                    .first;
        shots.sizes.push_back(0);
      }
      shot = found->second;
    }
    ++shots.sizes[shot];
    shots.shotOfAsset.push_back(shot);
  }
  return shots;
}

}  // namespace

std::vector<AssetBundle> makeBundles(const std::vector<MediaAsset>& assets) {
  Shots shots = findShots(assets);
  std::vector<std::vector<MediaAsset>> members(shots.sizes.size());
  for (std::size_t i = 0; i < assets.size(); ++i) {
    const std::uint32_t shot = shots.shotOfAsset[i];
    if (members[shot].empty()) members[shot].reserve(shots.sizes[shot]);
    members[shot].push_back(assets[i]);
  }
  std::vector<AssetBundle> bundles;
  bundles.reserve(members.size());
  for (std::size_t i = 0; i < members.size(); ++i) {
    bundles.push_back(*bundle(std::move(shots.keys[i]), std::move(members[i])));
  }
  return bundles;
}

std::optional<AssetBundle> bundle(std::string id, std::vector<MediaAsset> members) {
  if (members.empty()) return std::nullopt;
  MediaAsset original = originalOf(members);
  return AssetBundle{std::move(id), std::move(members), std::move(original)};
}

}  // namespace tavrix::BundleBuilder
