#include "transfer/KnownAssets.h"

namespace tavrix {

std::optional<ShotDate> shotDate(const MediaAsset& asset, const MediaAsset& lead) {
  const MediaAsset& dated = isPictureKind(asset.kind()) ? asset : lead;
  if (!isPictureKind(dated.kind())) return std::nullopt;
  if (const auto own = dated.cameraDate()) return ShotDate{*own, true};
  const auto date = dated.captureDate();
  return date ? std::optional{ShotDate{*date, false}} : std::nullopt;
}

std::optional<ShotDate> recordedDate(const MediaAsset& asset, const MediaAsset& lead,
                                     bool hasSerialNumber) {
  const auto date = shotDate(asset, lead);
  return date && hasSerialNumber && !date->isOwn ? std::nullopt : date;
}

const KnownAssets::Record* KnownAssets::record(const MediaAsset& asset) const {
  if (const auto found = byLocalID.find(asset.id()); found != byLocalID.end())
    return &found->second;
  const auto cloudID = asset.cloudID();
  if (!cloudID) return nullptr;
  const auto found = byCloudID.find(*cloudID);
  return found == byCloudID.end() ? nullptr : &found->second;
}

bool isOnDisk(const KnownAssets::Record& record, const FilesOnDisk& filesOnDisk) {
  return filesOnDisk.contains(record.path);
}

}  // namespace tavrix
