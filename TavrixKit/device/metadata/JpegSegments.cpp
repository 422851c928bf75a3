#include "device/metadata/JpegSegments.h"

#include "device/metadata/Bytes.h"

namespace tavrix {
namespace {

constexpr unsigned startOfScan = 0xDA;
constexpr unsigned endOfImage = 0xD9;
constexpr unsigned exifSegment = 0xE1;
constexpr std::string_view exifMark{"Exif\0", 5};
/// The mark and one more byte, which should be 0.
constexpr std::size_t exifMarkBytes = 6;

/// Returns true for markers without a segment after them.
bool standsAlone(unsigned marker) { return marker == 1 || (marker >= 0xD0 && marker <= 0xD8); }

/// Returns the segment that begins at `offset`, or nullopt if none does.
std::optional<JpegSegments::Segment> segmentAt(FileBytes& file, std::uint64_t offset) {
  constexpr int maxFill = 1024;
  for (int fill = 0; fill < maxFill; ++fill, ++offset) {
    const auto mark = file.at(offset, 2);
    if (!mark || mark->front() != '\xFF') return std::nullopt;
    if (mark->back() == '\xFF') continue;
    const auto marker = static_cast<unsigned char>(mark->back());
    if (standsAlone(marker)) return JpegSegments::Segment{marker, offset + 2, 0};
    const auto length = file.at(offset + 2, 2);
    if (!length || bigEndian(*length) < 2) return std::nullopt;
    return JpegSegments::Segment{marker, offset + 4, bigEndian(*length) - 2};
  }
  return std::nullopt;
}

}  // namespace

bool JpegSegments::Segment::isFrame() const {
  // DHT, JPG and DAC have numbers in the same range.
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

std::optional<JpegSegments::Segment> JpegSegments::next() {
  if (count_++ == maxSegments) return std::nullopt;
  auto segment = segmentAt(file_, offset_);
  if (!segment || segment->marker == startOfScan || segment->marker == endOfImage)
    return std::nullopt;
  offset_ = segment->begin + segment->length;
  return segment;
}

PixelSize JpegSegments::sizeOf(FileBytes& file, const Segment& frame) {
  // One byte of precision, then height and width.
  const auto size = file.at(frame.begin + 1, 4);
  if (!size) return {};
  return {bigEndian(size->substr(2)), bigEndian(size->substr(0, 2))};
}

std::optional<TiffBlock> JpegSegments::exifOf(FileBytes& file, const Segment& segment) {
  const bool isExif = segment.marker == exifSegment && segment.length > exifMarkBytes &&
                      file.at(segment.begin, exifMark.size()) == exifMark;
  if (!isExif) return std::nullopt;
  return TiffBlock::open(file, segment.begin + exifMarkBytes, segment.length - exifMarkBytes);
}

}  // namespace tavrix
