#include "media/AssetBundle.h"

#include <algorithm>

namespace tavrix {

struct AssetBundle::Record {
  std::string id;
  std::vector<MediaAsset> assets;
  MediaAsset original;
  bool hasEditedVersion = false;
  bool isLivePhoto = false;
};

AssetBundle::AssetBundle(std::string id, std::vector<MediaAsset> assets, MediaAsset original) {
  const auto isEdited = [](const MediaAsset& asset) { return asset.isEditedVariant(); };
  const auto isMotion = [](const MediaAsset& asset) {
    return asset.kind() == MediaKind::video && !asset.isEditedVariant();
  };
  const bool hasEdited = std::any_of(assets.begin(), assets.end(), isEdited);
  const bool isLive =
      original.kind() == MediaKind::photo && std::any_of(assets.begin(), assets.end(), isMotion);
  record_ = std::make_shared<Record>(
      Record{std::move(id), std::move(assets), std::move(original), hasEdited, isLive});
}

const std::string& AssetBundle::id() const { return record_->id; }
const std::vector<MediaAsset>& AssetBundle::assets() const { return record_->assets; }
const MediaAsset& AssetBundle::original() const { return record_->original; }
bool AssetBundle::hasEditedVersion() const { return record_->hasEditedVersion; }
bool AssetBundle::isLivePhoto() const { return record_->isLivePhoto; }

bool AssetBundle::isMotionPart(const MediaAsset& asset) const {
  return isLivePhoto() && asset.kind() == MediaKind::video && !asset.isEditedVariant();
}

bool AssetBundle::isPicture(const MediaAsset& asset) const {
  return isPictureKind(asset.kind()) && !isMotionPart(asset);
}

std::size_t AssetBundle::pictureCount() const {
  return static_cast<std::size_t>(std::count_if(
      assets().begin(), assets().end(), [&](const MediaAsset& asset) { return isPicture(asset); }));
}

const MediaAsset& AssetBundle::primaryPicture() const {
  if (isPicture(original())) return original();
  const auto found = std::find_if(assets().begin(), assets().end(),
                                  [&](const MediaAsset& asset) { return isPicture(asset); });
  return found == assets().end() ? original() : *found;
}

std::optional<GeoPoint> AssetBundle::position() const {
  const auto tells = [](const std::optional<GeoPoint>& point) {
    return point && isOnEarth(*point);
  };
  if (const auto point = primaryPicture().location(); tells(point)) return point;
  for (const MediaAsset& asset : assets()) {
    if (const auto point = asset.location(); tells(point)) return point;
  }
  return std::nullopt;
}

bool operator==(const AssetBundle& a, const AssetBundle& b) {
  return a.record_ == b.record_ ||
         (a.id() == b.id() && a.original() == b.original() && a.assets() == b.assets());
}

}  // namespace tavrix
