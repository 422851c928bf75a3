// The converter's own parsing: orientation, segments, references and tiles, the fields of a TIFF
// file, the frame of a result and what a process tells.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "conversion/ConversionReport.h"
#include "conversion/HeifReferences.h"
#include "conversion/HeifTiles.h"
#include "conversion/JpegFrame.h"
#include "conversion/MemoryReader.h"
#include "conversion/StillMetadata.h"
#include "conversion/TiffExif.h"
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
    // A block of ours is one that is read again.
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
