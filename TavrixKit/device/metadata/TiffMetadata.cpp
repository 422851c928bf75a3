#include <algorithm>
#include <set>

#include "device/metadata/Containers.h"
#include "device/metadata/ExifMetadata.h"

namespace tavrix {
namespace {

constexpr std::uint16_t newSubfileType = 0x00FE;
constexpr std::uint16_t imageWidth = 0x0100;
constexpr std::uint16_t imageLength = 0x0101;
constexpr std::uint16_t subDirectories = 0x014A;
constexpr std::size_t maxPictures = 16;

/// The pictures of a file: the chain of its directories, and the subdirectories of each.
class Pictures {
 public:
  explicit Pictures(const TiffBlock& block) : block_(block) {}

  void readAll(MediaMetadata& metadata) {
    std::uint64_t offset = block_.firstDirectory();
    // A damaged chain may lead back to one of its directories.
    while (offset != 0 && seen_.size() < maxPictures && seen_.insert(offset).second) {
      readBelow(readPicture(offset));
      offset = block_.nextDirectory(offset);
    }
    metadata.setPixels(width_, height_);
  }

 private:
  std::uint64_t numberOf(const TiffBlock::Directory& directory, std::uint16_t tag) const {
    const TiffBlock::Field* const field = TiffBlock::find(directory, tag);
    return field == nullptr ? 0 : block_.number(*field).value_or(0);
  }

  TiffBlock::Directory readPicture(std::uint64_t offset) {
    auto directory = block_.directory(offset);
    const std::uint64_t width = numberOf(directory, imageWidth);
    const std::uint64_t height = numberOf(directory, imageLength);
    // Any value except 0 marks a preview, a page or a mask.
    const bool isFull = numberOf(directory, newSubfileType) == 0;
    const bool isLarger = width * height > width_ * height_;
    if (width_ == 0 || (isFull && !isFull_) || (isFull == isFull_ && isLarger)) {
      width_ = width;
      height_ = height;
      isFull_ = isFull;
    }
    return directory;
  }

  void readBelow(const TiffBlock::Directory& directory) {
    const TiffBlock::Field* const field = TiffBlock::find(directory, subDirectories);
    if (field == nullptr) return;
    for (std::uint32_t i = 0; i < std::min<std::uint32_t>(field->count, maxPictures); ++i) {
      const auto offset = block_.number(*field, i);
      if (offset && seen_.insert(*offset).second) readPicture(*offset);
    }
  }

  const TiffBlock& block_;
  std::set<std::uint64_t> seen_;
  std::uint64_t width_ = 0;
  std::uint64_t height_ = 0;
  bool isFull_ = false;
};

}  // namespace

MediaMetadata readTiff(FileBytes& file) {
  MediaMetadata metadata;
  const auto block = TiffBlock::open(file, 0, file.size());
  if (!block) return metadata;
  readExif(*block, metadata);
  Pictures{*block}.readAll(metadata);
  return metadata;
}

}  // namespace tavrix
