#include "device/metadata/TiffPictures.h"

#include <algorithm>
#include <set>

namespace tavrix {
namespace {

constexpr std::uint16_t newSubfileType = 0x00FE;
constexpr std::uint16_t imageWidth = 0x0100;
constexpr std::uint16_t imageLength = 0x0101;
constexpr std::uint16_t subDirectories = 0x014A;
constexpr std::size_t maxPictures = 16;

TiffPicture pictureAt(const TiffBlock& block, std::uint64_t offset) {
  TiffPicture picture{block.directory(offset), {}, false};
  const auto number = [&](std::uint16_t tag) {
    return TiffPictures::number(block, picture.directory, tag);
  };
  picture.size = {number(imageWidth), number(imageLength)};
  // Any value except 0 marks a preview, a page or a mask.
  picture.isFull = number(newSubfileType) == 0;
  return picture;
}

}  // namespace

std::uint64_t TiffPictures::number(const TiffBlock& block, const TiffBlock::Directory& directory,
                                   std::uint16_t tag) {
  const TiffBlock::Field* const field = TiffBlock::find(directory, tag);
  return field == nullptr ? 0 : block.number(*field).value_or(0);
}

std::vector<TiffPicture> TiffPictures::read(const TiffBlock& block) {
  std::vector<TiffPicture> pictures;
  std::set<std::uint64_t> seen;
  std::uint64_t offset = block.firstDirectory();
  while (offset != 0 && seen.size() < maxPictures && seen.insert(offset).second) {
    pictures.push_back(pictureAt(block, offset));
    const TiffBlock::Field* const field =
        TiffBlock::find(pictures.back().directory, subDirectories);
    const std::uint32_t count = field == nullptr ? 0 : field->count;
    std::vector<TiffPicture> below;
    for (std::uint32_t i = 0; i < std::min<std::uint32_t>(count, maxPictures); ++i) {
      const auto at = block.number(*field, i);
      if (at && seen.insert(*at).second) below.push_back(pictureAt(block, *at));
    }
    std::move(below.begin(), below.end(), std::back_inserter(pictures));
    offset = block.nextDirectory(offset);
  }
  return pictures;
}

PixelSize TiffPictures::fullSize(const std::vector<TiffPicture>& pictures) {
  PixelSize best;
  bool isFull = false;
  for (const TiffPicture& picture : pictures) {
    const bool isLarger = picture.size.width * picture.size.height > best.width * best.height;
    if (best.width == 0 || (picture.isFull && !isFull) || (picture.isFull == isFull && isLarger)) {
      best = picture.size;
      isFull = picture.isFull;
    }
  }
  return best;
}

}  // namespace tavrix
