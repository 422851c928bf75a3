#include "conversion/JpegFrame.h"

#include <array>
#include <string_view>

#include "device/metadata/Bytes.h"

namespace tavrix {
namespace {

constexpr std::uint64_t startOfImage = 0xFFD8;
constexpr std::uint64_t endOfImage = 0xFFD9;
constexpr std::uint64_t startOfScan = 0xFFDA;

/// Returns the number in the two bytes at an offset; 0 past the end.
std::uint64_t numberAt(RangedReader& file, std::uint64_t offset) {
  std::array<char, 2> bytes{};
  return file.read(offset, bytes) == 2 ? bigEndian({bytes.data(), 2}) : 0;
}

bool isFrame(std::uint64_t marker) {
  // All markers in this range except those of tables.
  return marker >= 0xFFC0 && marker <= 0xFFCF && marker != 0xFFC4 && marker != 0xFFC8 &&
         marker != 0xFFCC;
}

}  // namespace

std::optional<JpegFrame> readJpegFrame(RangedReader& file) {
  constexpr int maxSegments = 4096;
  if (numberAt(file, 0) != startOfImage) return std::nullopt;
  if (file.size() < 4 || numberAt(file, file.size() - 2) != endOfImage) return std::nullopt;
  JpegFrame frame;
  std::uint64_t offset = 2;
  for (int i = 0; i < maxSegments; ++i) {
    const std::uint64_t marker = numberAt(file, offset);
    const std::uint64_t length = numberAt(file, offset + 2);
    if (marker < 0xFFC0 || length < 2) return std::nullopt;
    if (isFrame(marker)) {
      frame.height = static_cast<std::uint32_t>(numberAt(file, offset + 5));
      frame.width = static_cast<std::uint32_t>(numberAt(file, offset + 7));
    }
    if (marker == startOfScan) {
      return frame.width > 0 && frame.height > 0 ? std::optional{frame} : std::nullopt;
    }
    offset += 2 + length;
  }
  return std::nullopt;
}

}  // namespace tavrix
