#include "device/metadata/Containers.h"
#include "device/metadata/ExifMetadata.h"
#include "device/metadata/TiffPictures.h"

namespace tavrix {
namespace {

/// Returns the size of a raw picture between the borders of its sensor, as Panasonic and Leica
/// write it in the first directory; 0 × 0 if the directory does not have it.
PixelSize sizeWithinBorders(const TiffBlock& block, const TiffBlock::Directory& directory) {
  constexpr std::uint16_t top = 4;
  constexpr std::uint16_t left = 5;
  constexpr std::uint16_t bottom = 6;
  constexpr std::uint16_t right = 7;
  const auto between = [&](std::uint16_t begin, std::uint16_t end) {
    const std::uint64_t from = TiffPictures::number(block, directory, begin);
    const std::uint64_t to = TiffPictures::number(block, directory, end);
    return to > from ? to - from : 0;
  };
  return {between(left, right), between(top, bottom)};
}

}  // namespace

MediaMetadata readTiff(FileBytes& file) {
  MediaMetadata metadata;
  const auto block = TiffBlock::open(file, 0, file.size());
  if (!block) return metadata;
  readExif(*block, metadata);
  PixelSize size = TiffPictures::fullSize(TiffPictures::read(*block));
  if (size.width == 0) size = sizeWithinBorders(*block, block->directory(block->firstDirectory()));
  metadata.setPixels(size.width, size.height);
  return metadata;
}

}  // namespace tavrix
