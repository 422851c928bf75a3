#include "device/metadata/MetadataReader.h"

#include "device/metadata/Containers.h"
#include "device/metadata/MediaFormat.h"

namespace tavrix {

MediaMetadata MetadataReader::read(RangedReader& file) {
  FileBytes bytes{file};
  const auto format = mediaFormatOf(bytes);
  if (!format) return {};
  switch (*format) {
    case MediaFormat::jpeg:
      return readJpeg(bytes);
    case MediaFormat::png:
      return readPng(bytes);
    case MediaFormat::tiff:
      return readTiff(bytes);
    case MediaFormat::heif:
      return readHeif(bytes);
    case MediaFormat::movie:
      return readMovie(bytes);
    case MediaFormat::gif:
      return readGif(bytes);
    case MediaFormat::bmp:
      return readBmp(bytes);
    case MediaFormat::webp:
      return readWebp(bytes);
  }
  return {};
}

}  // namespace tavrix
