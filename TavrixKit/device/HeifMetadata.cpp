// The box "meta" of a HEIF file lists its items, where the bytes of each lie, and their properties
// (ISO/IEC 14496-12, 8.11). The Exif block is an item of its own that describes the picture.

#include <algorithm>

#include "device/Bytes.h"
#include "device/Containers.h"
#include "device/ExifMetadata.h"
#include "device/IsoBoxes.h"

namespace tavrix {
namespace {

/// Begin and length of bytes.
struct Extent {
  std::uint64_t begin = 0;
  std::uint64_t length = 0;
};

class HeifMeta {
 public:
  /// `meta` is the box; its content begins with version and flags.
  HeifMeta(FileBytes& file, const IsoBox& meta)
      : file_(file), begin_(meta.begin + 4), end_(meta.end), primary_(primaryItem()) {}

  void read(MediaMetadata& metadata) const {
    readSize(metadata);
    const auto extent = extentOf(exifItem());
    if (extent) readExifItem(*extent, metadata);
  }

 private:
  std::optional<IsoBox> box(std::string_view type) const {
    return IsoBoxes::find(file_, begin_, end_, type);
  }
  std::string_view content(std::string_view type) const {
    const auto found = box(type);
    return found ? contentOf(file_, *found).value_or("") : "";
  }

  std::uint64_t primaryItem() const {
    ByteCursor cursor{content("pitm")};
    const std::uint64_t version = cursor.number(1);
    cursor.take(3);
    return cursor.number(version == 0 ? 2 : 4);
  }

  std::vector<std::uint64_t> exifItems() const;
  bool describesPrimary(std::uint64_t item) const;
  std::uint64_t exifItem() const;
  std::optional<Extent> extentOf(std::uint64_t item) const;
  void readExifItem(const Extent& extent, MediaMetadata& metadata) const;
  std::vector<std::uint64_t> propertiesOfPrimary(const IsoBox& properties) const;
  void readSize(MediaMetadata& metadata) const;

  FileBytes& file_;
  std::uint64_t begin_;
  std::uint64_t end_;
  std::uint64_t primary_;
};

std::vector<std::uint64_t> HeifMeta::exifItems() const {
  std::vector<std::uint64_t> items;
  const auto list = box("iinf");
  const auto version = list ? file_.at(list->begin, 1) : std::nullopt;
  if (!version) return items;
  IsoBoxes entries{file_, list->begin + 4 + (version->front() == 0 ? 2U : 4U), list->end};
  while (const auto entry = entries.next()) {
    const auto bytes = entry->type == "infe" ? contentOf(file_, *entry) : std::nullopt;
    if (!bytes) continue;
    ByteCursor cursor{*bytes};
    const std::uint64_t entryVersion = cursor.number(1);
    cursor.take(3);
    const std::uint64_t item = cursor.number(entryVersion < 3 ? 2 : 4);
    cursor.take(2);
    // Older versions have no item types.
    if (entryVersion >= 2 && cursor.take(4) == "Exif") items.push_back(item);
  }
  return items;
}

/// Whether the item refers to the primary picture by "content describes".
bool HeifMeta::describesPrimary(std::uint64_t item) const {
  const auto references = box("iref");
  const auto version = references ? file_.at(references->begin, 1) : std::nullopt;
  if (!version) return false;
  const std::size_t idBytes = version->front() == 0 ? 2 : 4;
  IsoBoxes boxes{file_, references->begin + 4, references->end};
  while (const auto reference = boxes.next()) {
    const auto bytes = reference->type == "cdsc" ? contentOf(file_, *reference) : std::nullopt;
    if (!bytes) continue;
    ByteCursor cursor{*bytes};
    if (cursor.number(idBytes) != item) continue;
    for (std::uint64_t count = cursor.number(2); count > 0 && !cursor.hasFailed(); --count) {
      if (cursor.number(idBytes) == primary_ && !cursor.hasFailed()) return true;
    }
  }
  return false;
}

std::uint64_t HeifMeta::exifItem() const {
  const auto items = exifItems();
  if (items.empty()) return 0;
  if (items.size() == 1) return items.front();
  constexpr std::ptrdiff_t maxLooked = 16;
  const auto last = items.begin() + std::min<std::ptrdiff_t>(std::ssize(items), maxLooked);
  const auto found =
      std::find_if(items.begin(), last, [&](std::uint64_t item) { return describesPrimary(item); });
  return found == last ? items.front() : *found;
}

/// Where the bytes of an item lie; nothing when they are scattered or in another file.
std::optional<Extent> HeifMeta::extentOf(std::uint64_t item) const {
  ByteCursor cursor{content("iloc")};
  const std::uint64_t version = cursor.number(1);
  cursor.take(3);
  const std::uint64_t sizes = cursor.number(2);
  const std::size_t offsetBytes = sizes >> 12U & 15U;
  const std::size_t lengthBytes = sizes >> 8U & 15U;
  const std::size_t baseBytes = sizes >> 4U & 15U;
  const std::size_t indexBytes = version == 0 ? 0 : sizes & 15U;
  if (version > 2 || std::max({offsetBytes, lengthBytes, baseBytes, indexBytes}) > 8) return {};
  const std::size_t idBytes = version < 2 ? 2 : 4;
  for (std::uint64_t left = cursor.number(idBytes); left > 0 && !cursor.hasFailed(); --left) {
    const std::uint64_t id = cursor.number(idBytes);
    const std::uint64_t method = version == 0 ? 0 : cursor.number(2) & 15U;
    const std::uint64_t otherFile = cursor.number(2);
    const std::uint64_t base = cursor.number(baseBytes);
    const std::uint64_t extents = cursor.number(2);
    if (id != item) {
      cursor.take(static_cast<std::size_t>(extents) * (indexBytes + offsetBytes + lengthBytes));
      continue;
    }
    cursor.take(indexBytes);
    const std::uint64_t offset = cursor.number(offsetBytes);
    const std::uint64_t length = cursor.number(lengthBytes);
    if (cursor.hasFailed() || extents != 1 || otherFile != 0 || method > 1) return std::nullopt;
    const auto data = method == 1 ? box("idat") : std::nullopt;
    if (method == 1 && !data) return std::nullopt;
    return Extent{base + offset + (data ? data->begin : 0), length};
  }
  return std::nullopt;
}

/// The item begins with the distance of its TIFF header from behind that number.
void HeifMeta::readExifItem(const Extent& extent, MediaMetadata& metadata) const {
  const auto distance = file_.at(extent.begin, 4);
  if (!distance) return;
  const std::uint64_t skipped = 4 + bigEndian(*distance);
  if (skipped >= extent.length) return;
  const auto block = TiffBlock::open(file_, extent.begin + skipped, extent.length - skipped);
  if (block) readExif(*block, metadata);
}

/// Numbers of properties, from 1.
std::vector<std::uint64_t> HeifMeta::propertiesOfPrimary(const IsoBox& properties) const {
  std::vector<std::uint64_t> result;
  const auto found = IsoBoxes::find(file_, properties.begin, properties.end, "ipma");
  ByteCursor cursor{found ? contentOf(file_, *found).value_or("") : ""};
  const std::uint64_t version = cursor.number(1);
  const bool hasLargeIndexes = (cursor.number(3) & 1U) != 0;
  for (std::uint64_t left = cursor.number(4); left > 0 && !cursor.hasFailed(); --left) {
    const std::uint64_t item = cursor.number(version < 1 ? 2 : 4);
    for (std::uint64_t count = cursor.number(1); count > 0; --count) {
      // The first bit tells whether a reader must know the property.
      const std::uint64_t index =
          hasLargeIndexes ? cursor.number(2) & 0x7FFFU : cursor.number(1) & 0x7FU;
      if (item == primary_ && !cursor.hasFailed()) result.push_back(index);
    }
  }
  return result;
}

void HeifMeta::readSize(MediaMetadata& metadata) const {
  const auto properties = box("iprp");
  const auto list =
      properties ? IsoBoxes::find(file_, properties->begin, properties->end, "ipco") : std::nullopt;
  if (!list) return;
  const auto wanted = propertiesOfPrimary(*properties);
  IsoBoxes boxes{file_, list->begin, list->end};
  for (std::uint64_t index = 1; const auto property = boxes.next(); ++index) {
    const bool isWanted = std::find(wanted.begin(), wanted.end(), index) != wanted.end();
    if (!isWanted || property->type != "ispe") continue;
    if (const auto size = file_.at(property->begin + 4, 8)) {
      metadata.setPixels(bigEndian(size->substr(0, 4)), bigEndian(size->substr(4, 4)));
    }
    return;
  }
}

}  // namespace

MediaMetadata readHeif(FileBytes& file) {
  MediaMetadata metadata;
  metadata.cam = false;
  const auto meta = IsoBoxes::find(file, 0, file.size(), "meta");
  if (meta && meta->length() > 4) HeifMeta{file, *meta}.read(metadata);
  return metadata;
}

}  // namespace tavrix
