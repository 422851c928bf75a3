// Other picture formats that are found on phones: GIF89a, Windows bitmap, WebP (RFC 9649).

#include <cstdlib>

#include "device/metadata/Bytes.h"
#include "device/metadata/Containers.h"
#include "device/metadata/ExifMetadata.h"

namespace tavrix {
namespace {

constexpr std::uint64_t chunkHeader = 8;
constexpr int maxWebpChunks = 64;

/// Reads the size from the content of a WebP file's first chunk, which has one of three forms.
void readWebpSize(std::string_view type, std::string_view content, MediaMetadata& metadata) {
  constexpr std::uint64_t fourteenBits = 0x3FFF;
  if (type == "VP8X") {
    metadata.setPixels(littleEndian(content.substr(4, 3)) + 1,
                       littleEndian(content.substr(7, 3)) + 1);
  } else if (type == "VP8L") {
    const std::uint64_t bits = littleEndian(content.substr(1, 4));
    metadata.setPixels((bits & fourteenBits) + 1, (bits >> 14U & fourteenBits) + 1);
  } else if (type == "VP8 ") {
    metadata.setPixels(littleEndian(content.substr(6, 2)) & fourteenBits,
                       littleEndian(content.substr(8, 2)) & fourteenBits);
  }
}

void readWebpExif(FileBytes& file, std::uint64_t begin, std::uint64_t length,
                  MediaMetadata& metadata) {
  // Some writers put the Exif mark of a JPEG segment before the block.
  if (length > 6 && file.at(begin, 4) == "Exif") {
    begin += 6;
    length -= 6;
  }
  if (const auto block = TiffBlock::open(file, begin, length)) readExif(*block, metadata);
}

}  // namespace

MediaMetadata readGif(FileBytes& file) {
  MediaMetadata metadata;
  metadata.cam = false;
  if (const auto size = file.at(6, 4)) {
    metadata.setPixels(littleEndian(size->substr(0, 2)), littleEndian(size->substr(2, 2)));
  }
  return metadata;
}

MediaMetadata readBmp(FileBytes& file) {
  MediaMetadata metadata;
  metadata.cam = false;
  if (const auto size = file.at(18, 8)) {
    // A negative height means that the rows are stored from the top.
    const auto height = static_cast<std::int32_t>(littleEndian(size->substr(4, 4)));
    metadata.setPixels(littleEndian(size->substr(0, 4)),
                       static_cast<std::uint64_t>(std::abs(std::int64_t{height})));
  }
  return metadata;
}

MediaMetadata readWebp(FileBytes& file) {
  MediaMetadata metadata;
  metadata.cam = false;
  std::uint64_t offset = 12;
  for (int i = 0; i < maxWebpChunks; ++i) {
    const auto head = file.at(offset, chunkHeader);
    if (!head) break;
    const std::string_view type = head->substr(0, 4);
    const std::uint64_t length = littleEndian(head->substr(4));
    const std::uint64_t begin = offset + chunkHeader;
    if (i == 0) {
      if (const auto content = file.at(begin, 10)) readWebpSize(type, *content, metadata);
      // Only the extended format has other chunks.
      if (type != "VP8X") break;
    }
    if (type == "EXIF") {
      readWebpExif(file, begin, length, metadata);
      break;
    }
    offset = begin + length + length % 2;
  }
  return metadata;
}

}  // namespace tavrix
