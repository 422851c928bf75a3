#include "media/BundleBuilder.h"

#include <absl/container/flat_hash_map.h>

#include <algorithm>
#include <deque>
#include <limits>

namespace tavrix::BundleBuilder {
namespace {

void setOwnKey(std::string& key, const MediaAsset& asset) {
  key.assign("asset:").append(asset.id());
}

void setBundleKey(std::string& key, const MediaAsset& asset) {
  key.clear();
  if (const auto parsed = parseName(asset.name())) {
    key.append(asset.directory().value_or(""))
        .append("/")
        .append(parsed->prefix)
        .append("_")
        .append(parsed->number);
  } else {
    setOwnKey(key, asset);
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

bool isUnedited(const MediaAsset& asset, MediaKind kind) {
  return asset.kind() == kind && !asset.isEditedVariant();
}

/// Returns true if a film belongs to another shot than the stills of its name, by the identifiers.
bool isOfAnotherShot(const MediaAsset& film, const std::vector<MediaAsset>& members) {
  if (!film.contentID() || !isUnedited(film, MediaKind::video)) return false;
  bool isKnown = false;
  for (const MediaAsset& still : members) {
    if (!still.contentID() || !isUnedited(still, MediaKind::photo)) continue;
    if (still.contentID() == film.contentID()) return false;
    isKnown = true;
  }
  return isKnown;
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

using Members = std::vector<std::vector<MediaAsset>>;

Members membersOf(const std::vector<MediaAsset>& assets, const Shots& shots) {
  Members members(shots.sizes.size());
  for (std::size_t i = 0; i < assets.size(); ++i) {
    const std::uint32_t shot = shots.shotOfAsset[i];
    if (members[shot].empty()) members[shot].reserve(shots.sizes[shot]);
    members[shot].push_back(assets[i]);
  }
  return members;
}

/// Makes the films of other shots than their stills shots of their own, numbered behind all others.
/// Returns false if there are none.
bool separateFilms(const std::vector<MediaAsset>& assets, const Members& members, Shots& shots) {
  for (std::size_t i = 0; i < assets.size(); ++i) {
    const std::uint32_t shot = shots.shotOfAsset[i];
    if (!isOfAnotherShot(assets[i], members[shot])) continue;
    --shots.sizes[shot];
    shots.shotOfAsset[i] = static_cast<std::uint32_t>(shots.sizes.size());
    shots.sizes.push_back(1);
    setOwnKey(shots.keys.emplace_back(), assets[i]);
  }
  return shots.sizes.size() > members.size();
}

/// Returns the shots numbered in the order of their first assets.
Shots renumbered(Shots shots) {
  constexpr auto none = std::numeric_limits<std::uint32_t>::max();
  std::vector<std::uint32_t> numbers(shots.sizes.size(), none);
  Shots result;
  for (std::uint32_t& shot : shots.shotOfAsset) {
    if (numbers[shot] == none) {
      numbers[shot] = static_cast<std::uint32_t>(result.sizes.size());
      result.sizes.push_back(shots.sizes[shot]);
      result.keys.push_back(std::move(shots.keys[shot]));
    }
    shot = numbers[shot];
  }
  result.shotOfAsset = std::move(shots.shotOfAsset);
  return result;
}

}  // namespace

std::vector<AssetBundle> makeBundles(const std::vector<MediaAsset>& assets) {
  Shots shots = findShots(assets);
  Members members = membersOf(assets, shots);
  if (separateFilms(assets, members, shots)) {
    shots = renumbered(std::move(shots));
    members = membersOf(assets, shots);
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
