#include "device/thumbnails/PicturePart.h"

#include "device/metadata/JpegSegments.h"
#include "device/metadata/MemoryReader.h"

namespace tavrix {
namespace {

using Origin = EmbeddedPicture::Origin;

constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20U;

std::uint64_t mostBytesOf(Origin origin) {
  switch (origin) {
    case Origin::exifThumbnail:
    case Origin::thumbnailItem:
      return 4 * mebibyte;
    case Origin::preview:
      // Some raw files have a preview of the full size.
      return 16 * mebibyte;
    case Origin::keyFrame:
      return 32 * mebibyte;
    case Origin::whole:
      break;
  }
  return 0;
}

/// Returns the size of a JPEG file that usual decoders can show, else 0 × 0.
PixelSize sizeOfJpeg(std::string_view bytes) {
  // Baseline, extended and progressive. Raw files also have lossless JPEG files of sensor data.
  constexpr unsigned firstFrame = 0xC0;
  constexpr unsigned lastFrame = 0xC2;
  if (!bytes.starts_with("\xFF\xD8\xFF")) return {};
  MemoryReader reader{bytes};
  FileBytes file{reader};
  JpegSegments segments{file};
  while (const auto segment = segments.next()) {
    if (!segment->isFrame()) continue;
    if (segment->marker < firstFrame || segment->marker > lastFrame) return {};
    const PixelSize size = JpegSegments::sizeOf(file, *segment);
    return size.width > 0 && size.height > 0 ? size : PixelSize{};
  }
  return {};
}

}  // namespace

std::optional<std::string> fileOfPart(RangedReader& file, const FileBytes& fetched,
                                      PicturePart& part) {
  const bool isInFile = part.begin <= fetched.size() && part.length <= fetched.size() - part.begin;
  if (!isInFile || part.length == 0 || part.length > mostBytesOf(part.origin)) return std::nullopt;
  const auto length = static_cast<std::size_t>(part.length);
  std::string bytes = part.head;
  if (const auto kept = fetched.kept(part.begin, length)) {
    bytes += *kept;
  } else {
    // Not through FileBytes, which would fetch and keep more than the part.
    bytes.resize(part.head.size() + length);
    const std::size_t count = file.read(part.begin, std::span{bytes}.subspan(part.head.size()));
    if (count < length) return std::nullopt;
  }
  if (part.isJpeg()) {
    part.size = sizeOfJpeg(bytes);
    if (part.size.width == 0) return std::nullopt;
  }
  return bytes;
}

bool haveOtherShapes(PixelSize one, PixelSize other) {
  return (one.width > one.height && other.width < other.height) ||
         (one.width < one.height && other.width > other.height);
}

}  // namespace tavrix
