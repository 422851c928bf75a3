// PNG, third edition (W3C): chunks of length, type, content and checksum. An Exif block (chunk
// eXIf) may come before or after the picture's data.

#include <algorithm>

#include "device/metadata/Bytes.h"
#include "device/metadata/Containers.h"
#include "device/metadata/ExifMetadata.h"

namespace tavrix {
namespace {

constexpr std::uint64_t signatureBytes = 8;
constexpr std::uint64_t chunkOverhead = 12;
constexpr int maxChunks = 1024;
constexpr std::string_view lastChunk{"\0\0\0\0IEND", 8};

void readExifChunk(FileBytes& file, std::uint64_t begin, std::uint64_t length,
                   MediaMetadata& metadata) {
  if (const auto block = TiffBlock::open(file, begin, length)) readExif(*block, metadata);
}

/// Returns true if `tail` consists of consecutive chunks from `at` on and ends with the last chunk.
bool leadsToEnd(std::string_view tail, std::size_t at) {
  while (at + chunkOverhead <= tail.size()) {
    if (at + chunkOverhead == tail.size()) return tail.substr(at, 8) == lastChunk;
    at += chunkOverhead + bigEndian(tail.substr(at, 4));
  }
  return false;
}

/// Returns the first position of a chunk of type `type` from which chunks lead to the end of
/// `tail`.
std::optional<std::size_t> lastChunks(std::string_view tail, std::string_view type) {
  constexpr int maxTried = 16;
  auto at = tail.find(type, 4);
  for (int i = 0; i < maxTried && at != std::string_view::npos; ++i) {
    if (leadsToEnd(tail, at - 4)) return at - 4;
    at = tail.find(type, at + 1);
  }
  return std::nullopt;
}

/// Searches the last bytes of the file for the Exif block: the data before it may be thousands of
/// chunks, each of which would cost a range. Returns false if these bytes do not decide the
/// question, because no data chunk begins in them or the picture does not end with the file.
bool readExifInTail(FileBytes& file, std::uint64_t dataBegin, std::uint64_t dataLength,
                    MediaMetadata& metadata) {
  // Data chunks have similar lengths, so one begins in this many bytes, unless there is only one.
  constexpr std::uint64_t maxData = 64 * 1024;
  const bool isOne = dataBegin + dataLength + FileBytes::rangeBytes >= file.size();
  const std::uint64_t more = isOne || dataLength > maxData ? 0 : dataLength;
  const std::uint64_t count = std::min(file.size(), FileBytes::rangeBytes + more);
  const std::uint64_t begin = file.size() - count;
  const auto tail = file.at(begin, static_cast<std::size_t>(count));
  if (!tail) return false;
  const auto at = lastChunks(*tail, "eXIf");
  if (at) readExifChunk(file, begin + *at + 8, bigEndian(tail->substr(*at, 4)), metadata);
  return at || lastChunks(*tail, "IDAT");
}

}  // namespace

MediaMetadata readPng(FileBytes& file) {
  MediaMetadata metadata;
  metadata.cam = false;
  if (const auto header = file.at(signatureBytes, 16); header && header->substr(4, 4) == "IHDR") {
    metadata.setPixels(bigEndian(header->substr(8, 4)), bigEndian(header->substr(12, 4)));
  }
  std::uint64_t offset = signatureBytes;
  bool isTailRead = false;
  for (int i = 0; i < maxChunks; ++i) {
    const auto head = file.at(offset, 8);
    if (!head) return metadata;
    const std::uint64_t length = bigEndian(head->substr(0, 4));
    const std::string_view type = head->substr(4);
    if (type == "eXIf") {
      readExifChunk(file, offset + 8, length, metadata);
      return metadata;
    }
    if (type == "IEND") return metadata;
    if (type == "IDAT" && !isTailRead) {
      if (readExifInTail(file, offset, length, metadata)) return metadata;
      isTailRead = true;
    }
    offset += chunkOverhead + length;
  }
  return metadata;
}

}  // namespace tavrix
