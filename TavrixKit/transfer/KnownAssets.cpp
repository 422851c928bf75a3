#include "transfer/KnownAssets.h"

namespace tavrix {

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
