#include "device/metadata/Bytes.h"
#include "device/metadata/Containers.h"
#include "device/metadata/ExifMetadata.h"
#include "device/metadata/HeifItems.h"

namespace tavrix {
namespace {

void readItems(FileBytes& file, MediaMetadata& metadata) {
  const auto items = HeifItems::open(file);
  if (!items) return;
  if (const auto property = items->propertyOfPrimary("ispe")) {
    if (const auto size = file.at(property->begin + 4, 8)) {
      metadata.setPixels(bigEndian(size->substr(0, 4)), bigEndian(size->substr(4, 4)));
    }
  }
  const auto exif = items->exif();
  const auto block = exif ? TiffBlock::open(file, exif->begin, exif->length) : std::nullopt;
  if (block) readExif(*block, metadata);
}

}  // namespace

MediaMetadata readHeif(FileBytes& file) {
  MediaMetadata metadata;
  metadata.cam = false;
  readItems(file, metadata);
  if (metadata.exifDate) return metadata;
  // A sequence of pictures has the header of a film, too.
  const MediaMetadata film = readMovie(file);
  metadata.exifDate = film.exifDate;
  metadata.exifOffset = film.exifOffset;
  if (!metadata.px) {
    metadata.px = film.px;
    metadata.py = film.py;
  }
  return metadata;
}

}  // namespace tavrix
