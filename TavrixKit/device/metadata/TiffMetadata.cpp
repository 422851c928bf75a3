#include "device/metadata/Containers.h"
#include "device/metadata/ExifMetadata.h"
#include "device/metadata/TiffPictures.h"

namespace tavrix {

MediaMetadata readTiff(FileBytes& file) {
  MediaMetadata metadata;
  const auto block = TiffBlock::open(file, 0, file.size());
  if (!block) return metadata;
  readExif(*block, metadata);
  const PixelSize size = TiffPictures::fullSize(TiffPictures::read(*block));
  metadata.setPixels(size.width, size.height);
  return metadata;
}

}  // namespace tavrix
