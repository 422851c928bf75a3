#include "transfer/KnownAssets.h"

#include <algorithm>

namespace tavrix {

const MediaAsset& leadOf(const AssetBundle& bundle) {
  const MediaAsset& original = bundle.original();
  if (isPictureKind(original.kind())) return original;
  const auto& assets = bundle.assets();
  const auto picture = std::find_if(assets.begin(), assets.end(), [](const MediaAsset& asset) {
    return isPictureKind(asset.kind());
  });
  return picture == assets.end() ? original : *picture;
}

std::optional<ShotDate> shotDate(const MediaAsset& asset, const MediaAsset& lead) {
  const MediaAsset& dated = isPictureKind(asset.kind()) ? asset : lead;
  if (!isPictureKind(dated.kind())) return std::nullopt;
  if (const auto own = dated.cameraDate()) return ShotDate{*own, true};
  const auto date = dated.fileDate();
  return date ? std::optional{ShotDate{*date, false}} : std::nullopt;
}

std::optional<ShotDate> recordedDate(const MediaAsset& asset, const MediaAsset& lead,
                                     bool hasSerialNumber) {
  const auto date = shotDate(asset, lead);
  return date && hasSerialNumber && !date->isOwn ? std::nullopt : date;
}

bool isAnotherShot(const std::optional<ShotDate>& date, const std::optional<ShotDate>& recorded) {
  using namespace std::chrono_literals;
  constexpr auto largestShift = 26h;
  if (!date || !recorded) return false;
  if (!recorded->isOfEarlierForm && date->isOwn != recorded->isOwn) return false;
  const auto distance = std::chrono::abs(date->at - recorded->at);
  const bool isExact = date->isOwn && !recorded->isOfEarlierForm;
  return isExact ? distance != 0ms : distance > largestShift || distance % 15min != 0ms;
}

const KnownAssets::Record* KnownAssets::record(const MediaAsset& asset) const {
  if (const auto found = byLocalID.find(asset.id()); found != byLocalID.end())
    return &found->second;
  const auto cloudID = asset.cloudID();
  if (!cloudID) return nullptr;
  const auto found = byCloudID.find(*cloudID);
  return found == byCloudID.end() ? nullptr : &found->second;
}

}  // namespace tavrix
