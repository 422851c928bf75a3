// JPEG files have a thumbnail in their Exif block, and larger previews after their picture: those
// are listed in the segment of the Multi-Picture Format (CIPA DC-007).

#include <algorithm>

#include "device/metadata/JpegSegments.h"
#include "device/thumbnails/PicturePart.h"

namespace tavrix {
namespace {

using Origin = EmbeddedPicture::Origin;

constexpr unsigned listSegment = 0xE2;
constexpr std::string_view listMark{"MPF\0", 4};
constexpr std::uint16_t listTag = 0xB002;
constexpr std::uint64_t entryBytes = 16;
constexpr std::uint64_t maxEntries = 16;

/// Returns the longer side of a preview by its type in the list; 0 for other pictures, such as a
/// gain map or the other view of a stereo picture.
std::uint64_t sideOfType(std::uint64_t type) {
  constexpr std::uint64_t sizeOfTelevision = 0x010001;
  constexpr std::uint64_t sizeOfFilm = 0x010002;
  if (type == sizeOfTelevision) return 640;
  return type == sizeOfFilm ? 1920 : 0;
}

/// Returns the previews in a list of pictures. Offsets count from the list's own TIFF header and
/// lead out of the segment.
std::vector<PicturePart> previewsIn(FileBytes& file, const JpegSegments::Segment& segment) {
  std::vector<PicturePart> parts;
  const bool isList = segment.marker == listSegment && segment.length > listMark.size() &&
                      file.at(segment.begin, listMark.size()) == listMark;
  if (!isList) return parts;
  const auto block =
      TiffBlock::open(file, segment.begin + listMark.size(), segment.length - listMark.size());
  if (!block) return parts;
  const auto directory = block->directory(block->firstDirectory());
  const TiffBlock::Field* const list = TiffBlock::find(directory, listTag);
  const std::uint64_t count = list == nullptr ? 0 : list->count / entryBytes;
  for (std::uint64_t i = 0; i < std::min(count, maxEntries); ++i) {
    const std::uint64_t at = list->valueAt + i * entryBytes;
    const std::uint64_t side = sideOfType(block->numberAt(at, 4).value_or(0) & 0xFFFFFFU);
    const std::uint64_t length = block->numberAt(at + 4, 4).value_or(0);
    const std::uint64_t offset = block->numberAt(at + 8, 4).value_or(0);
    if (side == 0 || offset == 0) continue;
    parts.push_back({Origin::preview, block->begin() + offset, length, {}, {}, side});
  }
  return parts;
}

}  // namespace

PictureParts jpegParts(FileBytes& file) {
  // The frame may follow megabytes of other segments. Without its size, only black bars and a
  // thumbnail of another shape stay unnoticed.
  constexpr std::size_t maxRanges = 2;
  PictureParts result;
  bool hasExif = false;
  JpegSegments segments{file};
  while (file.ranges() <= maxRanges) {
    const auto segment = segments.next();
    if (!segment) break;
    if (segment->isFrame()) {
      result.full = JpegSegments::sizeOf(file, *segment);
      break;
    }
    std::vector<PicturePart> found = previewsIn(file, *segment);
    const auto exif = hasExif ? std::nullopt : JpegSegments::exifOf(file, *segment);
    if (exif) {
      hasExif = true;
      result.orientation = orientationIn(*exif);
      found = jpegsIn(*exif, Origin::exifThumbnail);
    }
    result.parts.insert(result.parts.end(), found.begin(), found.end());
  }
  return result;
}

}  // namespace tavrix
