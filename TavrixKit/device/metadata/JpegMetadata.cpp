#include "device/metadata/Containers.h"
#include "device/metadata/ExifMetadata.h"
#include "device/metadata/JpegSegments.h"

namespace tavrix {
namespace {

/// Returns true if an Exif block has yielded capture metadata. A broken or empty block yields none,
/// and a good one may follow.
bool isTold(const MediaMetadata& metadata) {
  return metadata.exifDate || metadata.lat || metadata.cam == true;
}

}  // namespace

MediaMetadata readJpeg(FileBytes& file) {
  MediaMetadata metadata;
  metadata.cam = false;
  JpegSegments segments{file};
  while (const auto segment = segments.next()) {
    if (segment->isFrame()) {
      const PixelSize size = JpegSegments::sizeOf(file, *segment);
      metadata.setPixels(size.width, size.height);
      break;
    }
    if (isTold(metadata)) continue;
    if (const auto block = JpegSegments::exifOf(file, *segment)) readExif(*block, metadata);
  }
  return metadata;
}

}  // namespace tavrix
