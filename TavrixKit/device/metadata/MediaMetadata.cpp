#include "device/metadata/MediaMetadata.h"

namespace tavrix {

MediaMetadata metadataOf(const SnapshotItem& item) {
  return {item.exifDate, item.exifOffset, item.lat, item.lon,
          item.px,       item.py,         item.cam, item.contentID};
}

void copyMetadata(const SnapshotItem& from, SnapshotItem& to) {
  to.exifDate = from.exifDate;
  to.exifOffset = from.exifOffset;
  const bool isNowhere = from.lat == 0.0 && from.lon == 0.0;
  to.lat = isNowhere ? std::nullopt : from.lat;
  to.lon = isNowhere ? std::nullopt : from.lon;
  to.px = from.px;
  to.py = from.py;
  to.cam = from.cam;
  to.contentID = from.contentID == "" ? std::nullopt : from.contentID;
}

SnapshotItem withMetadata(SnapshotItem item, const MediaMetadata& metadata) {
  item.exifDate = metadata.exifDate;
  item.exifOffset = metadata.exifOffset;
  item.lat = metadata.lat;
  item.lon = metadata.lon;
  item.px = metadata.px;
  item.py = metadata.py;
  item.cam = metadata.cam;
  item.contentID = metadata.contentID;
  return item;
}

}  // namespace tavrix
