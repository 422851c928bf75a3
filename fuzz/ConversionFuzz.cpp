// Tests the converter's own parsers: orientation, segments, references and tiles, the fields of a
// TIFF file, the frame of a result, the report of a process and the head of a decoded picture.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "conversion/ConversionReport.h"
#include "conversion/JpegFrame.h"
#include "conversion/PictureMessages.h"
#include "conversion/codecs/HeifReferences.h"
#include "conversion/codecs/HeifTiles.h"
#include "conversion/codecs/StillMetadata.h"
#include "conversion/codecs/TiffExif.h"
#include "device/metadata/MemoryReader.h"
#include "transfer/MediaConverter.h"

using namespace tavrix;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

void checkMetadata(const std::string& bytes) {
  const std::string upright = withUprightExif(bytes);
  require(upright.size() == bytes.size() && withUprightExif(upright) == upright);
  require(orientationOf(upright) == 1);
  const std::string packet = withUprightXmp(bytes);
  require(packet.size() == bytes.size() && withUprightXmp(packet) == packet);
  try {
    for (const JpegSegment& segment : segmentsOf({upright, packet, bytes}))
      require(segment.payload.size() <= 65'533);
    const std::string exif = exifOfTiff(bytes);
    // A block that the program wrote can be read again.
    require(exif.empty() || exifOfTiff(exif).size() <= exif.size());
  } catch (const ConversionError& error) {
    require(error.failure() == ConversionFailure::tooLarge);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes{reinterpret_cast<const char*>(data), size};
  checkMetadata(bytes);
  isRawTiff(bytes);
  MemoryReader file{bytes};
  if (const auto frame = readJpegFrame(file)) require(frame->width > 0 && frame->height > 0);
  ConversionReport::Reader reader;
  reader.add(bytes);
  if (const auto head = PictureMessages::readReplyHead(bytes))
    require(PictureMessages::replyHead(*head) == bytes);
  if (const auto picture = readHeifTiles(bytes)) {
    require(picture->tiles.size() == std::size_t{picture->columns} * picture->rows);
    require(std::uint64_t{picture->tileWidth} * picture->columns >= picture->width);
    require(std::uint64_t{picture->tileHeight} * picture->rows >= picture->height);
    for (const std::string_view tile : picture->tiles)
      require(tile.data() >= bytes.data() && tile.end() <= bytes.data() + bytes.size());
  }
  relaxHeifReferences(bytes);
  require(bytes.size() == size);
  return 0;
}
