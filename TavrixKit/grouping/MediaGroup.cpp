#include "grouping/MediaGroup.h"

namespace tavrix {

MediaGroup::MediaCounts MediaGroup::counts() const {
  MediaCounts counts;
  for (const AssetBundle& bundle : bundles) {
    for (const MediaAsset& asset : bundle.assets()) {
      switch (asset.kind()) {
        case MediaKind::photo:
          ++counts.photos;
          break;
        case MediaKind::video:
          ++counts.videos;
          break;
        case MediaKind::sidecar:
          ++counts.sidecars;
          break;
        case MediaKind::other:
          ++counts.others;
          break;
      }
      counts.totalBytes += asset.sizeBytes();
    }
  }
  return counts;
}

}  // namespace tavrix
