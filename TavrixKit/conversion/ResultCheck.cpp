#include "conversion/ResultCheck.h"

#include <algorithm>

#include "conversion/JpegFrame.h"
#include "device/metadata/MetadataReader.h"

namespace tavrix {

bool isWholeStill(RangedReader& source, RangedReader& result, const ConversionResult& told) {
  const auto frame = readJpegFrame(result);
  if (frame != JpegFrame{told.width, told.height}) return false;
  const MediaMetadata metadata = MetadataReader::read(source);
  if (!metadata.px || !metadata.py || told.isCropped) return true;
  return std::minmax<std::int64_t>(frame->width, frame->height) ==
         std::minmax(*metadata.px, *metadata.py);
}

bool isWholeFilm(RangedReader& source, RangedReader& result, const ConversionResult& told) {
  const MediaMetadata before = MetadataReader::read(source);
  const MediaMetadata after = MetadataReader::read(result);
  if (!after.px || !after.py) return false;
  // If the source has its place only in a form that is not read here, the result has it in more
  // forms, so only a place that was read is compared.
  const bool isSamePlace = !before.lat || (before.lat == after.lat && before.lon == after.lon);
  const bool isSameCapture =
      before.exifDate == after.exifDate && before.exifOffset == after.exifOffset && isSamePlace;
  return isSameCapture &&
         std::minmax(*after.px, *after.py) == std::minmax<std::int64_t>(told.width, told.height);
}

}  // namespace tavrix
