// PNG, third edition (W3C): chunks of length, type, content and checksum. An Exif block
// (chunk eXIf) may stand before the picture's data or behind it.

#include <algorithm>

#include "device/Bytes.h"
#include "device/Containers.h"
#include "device/ExifMetadata.h"

namespace tavrix {
namespace {

constexpr std::uint64_t signatureBytes = 8;
constexpr std::uint64_t chunkOverhead = 12;
constexpr int maxChunks = 256;
constexpr std::string_view lastChunk{"\0\0\0\0IEND", 8};

void readExifChunk(FileBytes& file, std::uint64_t begin, std::uint64_t length,
                   MediaMetadata& metadata) {
  if (const auto block = TiffBlock::open(file, begin, length)) readExif(*block, metadata);
}

/// Whether chunks follow one another in `tail` from `at` on, up to the last one at its end.
bool leadsToEnd(std::string_view tail, std::size_t at) {
  while (at + chunkOverhead <= tail.size()) {
    if (at + chunkOverhead == tail.size()) return tail.substr(at, 8) == lastChunk;
    at += chunkOverhead + bigEndian(tail.substr(at, 4));
  }
  return false;
}

/// Looks for the block among the last bytes of the file: the data before it may be thousands of
/// chunks, each a range to read.
void readExifBehindData(FileBytes& file, MediaMetadata& metadata) {
  const auto count =
      static_cast<std::size_t>(std::min<std::uint64_t>(file.size(), FileBytes::rangeBytes));
  const std::uint64_t begin = file.size() - count;
  const auto tail = file.at(begin, count);
  if (!tail) return;
  for (auto at = tail->find("eXIf"); at != std::string_view::npos;
       at = tail->find("eXIf", at + 1)) {
    if (at < 4 || !leadsToEnd(*tail, at - 4)) continue;
    readExifChunk(file, begin + at + 4, bigEndian(tail->substr(at - 4, 4)), metadata);
    return;
  }
}

}  // namespace

MediaMetadata readPng(FileBytes& file) {
  MediaMetadata metadata;
  metadata.cam = false;
  if (const auto header = file.at(signatureBytes, 16); header && header->substr(4, 4) == "IHDR") {
    metadata.setPixels(bigEndian(header->substr(8, 4)), bigEndian(header->substr(12, 4)));
  }
  std::uint64_t offset = signatureBytes;
  for (int i = 0; i < maxChunks; ++i) {
    const auto head = file.at(offset, 8);
    if (!head) return metadata;
    const std::uint64_t length = bigEndian(head->substr(0, 4));
    const std::string_view type = head->substr(4);
    if (type == "eXIf") {
      readExifChunk(file, offset + 8, length, metadata);
      return metadata;
    }
    if (type == "IDAT") break;
    offset += chunkOverhead + length;
  }
  readExifBehindData(file, metadata);
  return metadata;
}

}  // namespace tavrix
