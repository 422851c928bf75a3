// TIFF 6.0, DNG 1.6 and TIFF/EP (ISO 12234-2): previews of raw pictures are JPEG files that a
// directory of their own locates. So is the thumbnail of an Exif block (Exif 2.32, 4.5.5).

#include <algorithm>

#include "device/metadata/TiffPictures.h"
#include "device/thumbnails/PicturePart.h"

namespace tavrix {
namespace {

namespace tag {
constexpr std::uint16_t compression = 0x0103;
constexpr std::uint16_t photometric = 0x0106;
constexpr std::uint16_t stripOffsets = 0x0111;
constexpr std::uint16_t orientation = 0x0112;
constexpr std::uint16_t stripByteCounts = 0x0117;
constexpr std::uint16_t jpegTables = 0x015B;
constexpr std::uint16_t jpegOffset = 0x0201;
constexpr std::uint16_t jpegLength = 0x0202;
constexpr std::uint16_t dngVersion = 0xC612;
}  // namespace tag

/// Returns true if the only strip of a picture is a JPEG file that needs nothing from the
/// directory.
bool isJpegStrip(const TiffBlock& block, const TiffBlock::Directory& directory) {
  const std::uint64_t compression = TiffPictures::number(block, directory, tag::compression);
  const TiffBlock::Field* const photometric = TiffBlock::find(directory, tag::photometric);
  const TiffBlock::Field* const strips = TiffBlock::find(directory, tag::stripOffsets);
  // A JPEG file without marks of its own is taken for YCbCr or grey.
  const std::uint64_t colours = photometric == nullptr ? 6 : block.number(*photometric).value_or(0);
  return (compression == 6 || compression == 7) && (colours == 6 || colours == 1) &&
         strips != nullptr && strips->count == 1 &&
         TiffBlock::find(directory, tag::jpegTables) == nullptr;
}

/// Returns true if the file has the values of a sensor instead of a picture.
bool isRaw(FileBytes& file, const TiffBlock& block, const std::vector<TiffPicture>& pictures) {
  constexpr std::uint64_t colourFilterArray = 32803;
  constexpr std::uint64_t linearRaw = 34892;
  const bool hasSensorValues =
      std::any_of(pictures.begin(), pictures.end(), [&](const TiffPicture& picture) {
        const auto colours = TiffPictures::number(block, picture.directory, tag::photometric);
        return colours == colourFilterArray || colours == linearRaw ||
               TiffBlock::find(picture.directory, tag::dngVersion) != nullptr;
      });
  // One maker's files name neither, but have their mark after the header.
  return hasSensorValues || file.at(8, 2) == "CR";
}

}  // namespace

std::vector<PicturePart> jpegsIn(const TiffBlock& block, EmbeddedPicture::Origin origin) {
  std::vector<PicturePart> parts;
  for (const TiffPicture& picture : TiffPictures::read(block)) {
    const auto number = [&](std::uint16_t tag) {
      return TiffPictures::number(block, picture.directory, tag);
    };
    std::uint64_t offset = number(tag::jpegOffset);
    std::uint64_t length = number(tag::jpegLength);
    if (offset == 0 && isJpegStrip(block, picture.directory)) {
      offset = number(tag::stripOffsets);
      length = number(tag::stripByteCounts);
    }
    if (offset == 0 || offset > block.length() || length > block.length() - offset) continue;
    parts.push_back({origin, block.begin() + offset, length, {}, picture.size, 0});
  }
  return parts;
}

int orientationIn(const TiffBlock& block) {
  const auto first = block.directory(block.firstDirectory());
  const std::uint64_t value = TiffPictures::number(block, first, tag::orientation);
  return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
}

PictureParts tiffParts(FileBytes& file) {
  const auto block = TiffBlock::open(file, 0, file.size());
  if (!block) return {};
  const auto pictures = TiffPictures::read(*block);
  return {jpegsIn(*block, EmbeddedPicture::Origin::preview), TiffPictures::fullSize(pictures),
          orientationIn(*block), !isRaw(file, *block, pictures)};
}

}  // namespace tavrix
