#include <algorithm>
#include <array>

#include "device/metadata/Bytes.h"
#include "device/metadata/HeifItems.h"
#include "device/thumbnails/HeifAssembly.h"
#include "device/thumbnails/PicturePart.h"

namespace tavrix {
namespace {

using Origin = EmbeddedPicture::Origin;

constexpr std::size_t maxThumbnails = 8;
constexpr std::size_t maxProperties = 32;
constexpr std::uint64_t maxPropertyBytes = 64 * 1024;

bool isTransformation(std::string_view type) {
  return type == "irot" || type == "imir" || type == "clap";
}

/// The properties of a picture that its decoder needs.
std::vector<HeifProperty> propertiesOf(FileBytes& file, const HeifItems& items,
                                       std::uint64_t item) {
  constexpr std::array<std::string_view, 9> needed{"hvcC", "av1C", "ispe", "colr", "pixi",
                                                   "pasp", "clap", "irot", "imir"};
  std::vector<HeifProperty> result;
  for (const IsoBox& property : items.propertiesOf(item)) {
    const bool isNeeded = std::find(needed.begin(), needed.end(), property.type) != needed.end();
    if (!isNeeded || property.length() > maxPropertyBytes) continue;
    const auto content = contentOf(file, property);
    if (content && result.size() < maxProperties)
      result.push_back({std::string{property.type}, std::string{*content}});
  }
  return result;
}

const HeifProperty* find(const std::vector<HeifProperty>& properties, std::string_view type) {
  const auto found =
      std::find_if(properties.begin(), properties.end(),
                   [&](const HeifProperty& property) { return property.type == type; });
  return found == properties.end() ? nullptr : &*found;
}

PixelSize sizeIn(const std::vector<HeifProperty>& properties) {
  const HeifProperty* const extents = find(properties, "ispe");
  ByteCursor cursor{extents == nullptr ? std::string_view{} : extents->content};
  cursor.take(4);
  const std::uint64_t width = cursor.number(4);
  return {width, cursor.number(4)};
}

/// Returns the Exif orientation that does the same as rotation and mirror.
int orientationIn(const std::vector<HeifProperty>& properties) {
  // By mirror (none, top and bottom exchanged, left and right exchanged) and quarter turns to the
  // left, which are done first.
  constexpr std::array<std::array<int, 4>, 3> orientations{
      {{1, 8, 3, 6}, {4, 5, 2, 7}, {2, 7, 4, 5}}};
  const auto firstByte = [&](std::string_view type) -> std::optional<unsigned> {
    const HeifProperty* const property = find(properties, type);
    if (property == nullptr || property->content.empty()) return std::nullopt;
    return static_cast<unsigned char>(property->content.front());
  };
  const auto axis = firstByte("imir");
  return orientations.at(axis ? 1 + (*axis & 1U) : 0).at(firstByte("irot").value_or(0) & 3U);
}

/// Returns the properties of a thumbnail with what turns the primary picture upright. A thumbnail
/// may have that itself, or may be upright already.
std::vector<HeifProperty> uprightProperties(std::vector<HeifProperty> own,
                                            const std::vector<HeifProperty>& primary) {
  const bool isTurned = std::any_of(own.begin(), own.end(), [](const HeifProperty& property) {
    return isTransformation(property.type);
  });
  if (isTurned || haveOtherShapes(sizeIn(own), sizeIn(primary))) return own;
  for (const HeifProperty& property : primary) {
    // A crop counts in pixels of the primary picture.
    if (isTransformation(property.type) && property.type != "clap") own.push_back(property);
  }
  return own;
}

std::optional<PicturePart> thumbnail(FileBytes& file, const HeifItems& items, std::uint64_t item,
                                     const std::vector<HeifProperty>& primary) {
  const auto extent = items.extentOf(item);
  const std::string_view type = items.typeOf(item);
  if (!extent || extent->length > std::uint64_t{1} << 30U) return std::nullopt;
  const auto properties = uprightProperties(propertiesOf(file, items, item), primary);
  PicturePart part{Origin::thumbnailItem, extent->begin, extent->length, {}, sizeIn(properties), 0};
  if (type == "jpeg") return part;
  const bool isCoded = (type == "hvc1" && find(properties, "hvcC") != nullptr) ||
                       (type == "av01" && find(properties, "av1C") != nullptr);
  if (!isCoded || part.size.width == 0 || part.size.height == 0) return std::nullopt;
  part.head = heifHead(type, properties, extent->length);
  return part;
}

}  // namespace

PictureParts heifParts(FileBytes& file) {
  PictureParts result;
  const auto items = HeifItems::open(file);
  if (!items) return result;
  const auto primary = propertiesOf(file, *items, items->primary());
  result.full = sizeIn(primary);
  result.orientation = orientationIn(primary);
  std::size_t count = 0;
  for (const std::uint64_t item : items->thumbnails()) {
    if (count++ == maxThumbnails) break;
    if (auto part = thumbnail(file, *items, item, primary))
      result.parts.push_back(std::move(*part));
  }
  // The Exif block is elsewhere in the file, and its thumbnail is no larger than an item.
  if (!result.parts.empty()) return result;
  const auto exif = items->exif();
  const auto block = exif ? TiffBlock::open(file, exif->begin, exif->length) : std::nullopt;
  if (block) result.parts = jpegsIn(*block, Origin::exifThumbnail);
  return result;
}

}  // namespace tavrix
