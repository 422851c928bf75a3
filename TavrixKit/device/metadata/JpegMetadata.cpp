#include "device/metadata/Bytes.h"
#include "device/metadata/Containers.h"
#include "device/metadata/ExifMetadata.h"

namespace tavrix {
namespace {

constexpr int maxSegments = 1024;
constexpr unsigned startOfScan = 0xDA;
constexpr unsigned endOfImage = 0xD9;
constexpr unsigned exifSegment = 0xE1;
constexpr std::string_view exifMark{"Exif\0", 5};
/// The mark and one more byte, which should be 0.
constexpr std::size_t exifMarkBytes = 6;

/// Returns true for a start of frame in any coding. DHT, JPG and DAC have numbers in the same
/// range.
bool isFrame(unsigned marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// Returns true for markers without a segment after them.
bool standsAlone(unsigned marker) { return marker == 1 || (marker >= 0xD0 && marker <= 0xD8); }

struct Segment {
  unsigned marker = 0;
  std::uint64_t begin = 0;  ///< offset of its content
  std::uint64_t length = 0;
};

/// Returns the segment that begins at `offset`, or nullopt if none does.
std::optional<Segment> segmentAt(FileBytes& file, std::uint64_t offset) {
  constexpr int maxFill = 1024;
  for (int fill = 0; fill < maxFill; ++fill, ++offset) {
    const auto mark = file.at(offset, 2);
    if (!mark || mark->front() != '\xFF') return std::nullopt;
    if (mark->back() == '\xFF') continue;
    const auto marker = static_cast<unsigned char>(mark->back());
    if (standsAlone(marker)) return Segment{marker, offset + 2, 0};
    const auto length = file.at(offset + 2, 2);
    if (!length || bigEndian(*length) < 2) return std::nullopt;
    return Segment{marker, offset + 4, bigEndian(*length) - 2};
  }
  return std::nullopt;
}

bool isExif(FileBytes& file, const Segment& segment) {
  return segment.marker == exifSegment && segment.length > exifMarkBytes &&
         file.at(segment.begin, exifMark.size()) == exifMark;
}

/// Returns true if an Exif block has yielded capture metadata. A broken or empty block yields none,
/// and a good one may follow.
bool isTold(const MediaMetadata& metadata) {
  return metadata.exifDate || metadata.lat || metadata.cam == true;
}

}  // namespace

MediaMetadata readJpeg(FileBytes& file) {
  MediaMetadata metadata;
  metadata.cam = false;
  std::uint64_t offset = 2;
  for (int i = 0; i < maxSegments; ++i) {
    const auto segment = segmentAt(file, offset);
    if (!segment || segment->marker == startOfScan || segment->marker == endOfImage) break;
    if (isFrame(segment->marker)) {
      // One byte of precision, then height and width.
      if (const auto size = file.at(segment->begin + 1, 4)) {
        metadata.setPixels(bigEndian(size->substr(2)), bigEndian(size->substr(0, 2)));
      }
      break;
    }
    if (!isTold(metadata) && isExif(file, *segment)) {
      const auto block =
          TiffBlock::open(file, segment->begin + exifMarkBytes, segment->length - exifMarkBytes);
      if (block) readExif(*block, metadata);
    }
    offset = segment->begin + segment->length;
  }
  return metadata;
}

}  // namespace tavrix
