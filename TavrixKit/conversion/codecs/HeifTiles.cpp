#include "conversion/codecs/HeifTiles.h"

#include <algorithm>
#include <map>

#include "device/metadata/Bytes.h"

namespace tavrix {
namespace {

using Bytes = std::string_view;
using ItemID = std::uint64_t;

/// More than any phone writes.
constexpr std::size_t mostTiles = 4096;
constexpr std::size_t mostMetaBytes = std::size_t{4} << 20U;

struct Box {
  Bytes type;
  Bytes content;
};

/// Removes the next box and returns it; nullopt if there is no complete one.
std::optional<Box> nextBox(Bytes& rest) {
  ByteCursor cursor{rest};
  std::uint64_t size = cursor.number(4);
  const Bytes type = cursor.take(4);
  const std::size_t head = size == 1 ? 16 : 8;
  if (size == 1) size = cursor.number(8);
  if (size == 0) size = rest.size();
  if (cursor.hasFailed() || size < head || size > rest.size()) return std::nullopt;
  const auto length = static_cast<std::size_t>(size);
  const Box box{type, rest.substr(head, length - head)};
  rest.remove_prefix(length);
  return box;
}

Bytes contentOf(Bytes boxes, Bytes type) {
  while (const auto box = nextBox(boxes)) {
    if (box->type == type) return box->content;
  }
  return {};
}

Bytes from(Bytes bytes, std::size_t begin) { return bytes.substr(std::min(begin, bytes.size())); }

/// The items in the box "meta" of a file. If the box is damaged, items are missing.
class Items {
 public:
  explicit Items(Bytes file) : file_(file), meta_(from(contentOf(file, "meta"), 4)) {
    if (meta_.size() > mostMetaBytes) meta_ = {};
    ByteCursor cursor{contentOf(meta_, "pitm")};
    const bool isShort = cursor.number(4) >> 24U == 0;
    primary = cursor.number(isShort ? 2 : 4);
    readTypes();
    readPlaces();
    readProperties();
  }

  Bytes typeOf(ItemID item) const { return valueOf(types_, item); }
  Bytes contentOfItem(ItemID item) const { return valueOf(places_, item); }
  /// Returns the items from which the given one is derived.
  std::vector<ItemID> sourcesOf(ItemID item) const {
    std::vector<ItemID> sources;
    Bytes references = contentOf(meta_, "iref");
    const std::size_t idBytes = references.starts_with('\0') ? 2 : 4;
    references = from(references, 4);
    while (const auto reference = nextBox(references)) {
      ByteCursor cursor{reference->content};
      if (reference->type != "dimg" || cursor.number(idBytes) != item) continue;
      for (std::uint64_t left = cursor.number(2); left > 0; --left)
        sources.push_back(cursor.number(idBytes));
      if (cursor.hasFailed()) return {};
    }
    return sources;
  }
  std::vector<Box> propertiesOf(ItemID item) const {
    const auto found = properties_.find(item);
    return found == properties_.end() ? std::vector<Box>{} : found->second;
  }

  ItemID primary = 0;

 private:
  static Bytes valueOf(const std::map<ItemID, Bytes>& values, ItemID item) {
    const auto found = values.find(item);
    return found == values.end() ? Bytes{} : found->second;
  }

  void readTypes() {
    Bytes entries = contentOf(meta_, "iinf");
    entries = from(entries, entries.starts_with('\0') ? 6 : 8);
    while (const auto entry = nextBox(entries)) {
      ByteCursor cursor{entry->content};
      const std::uint64_t version = cursor.number(4) >> 24U;
      if (entry->type != "infe" || version < 2) continue;
      const ItemID item = cursor.number(version == 2 ? 2 : 4);
      cursor.take(2);
      types_.emplace(item, cursor.take(4));
    }
  }

  void readPlaces() {
    ByteCursor cursor{contentOf(meta_, "iloc")};
    const std::uint64_t version = cursor.number(4) >> 24U;
    const std::uint64_t sizes = cursor.number(2);
    const std::size_t offsetBytes = sizes >> 12U & 15U;
    const std::size_t lengthBytes = sizes >> 8U & 15U;
    const std::size_t baseBytes = sizes >> 4U & 15U;
    const std::size_t indexBytes = version == 0 ? 0 : sizes & 15U;
    if (version > 2 || std::max({offsetBytes, lengthBytes, baseBytes, indexBytes}) > 8) return;
    const std::size_t idBytes = version < 2 ? 2 : 4;
    const Bytes embedded = contentOf(meta_, "idat");
    for (std::uint64_t left = cursor.number(idBytes); left > 0 && !cursor.hasFailed(); --left) {
      const ItemID item = cursor.number(idBytes);
      const std::uint64_t method = version == 0 ? 0 : cursor.number(2) & 15U;
      const std::uint64_t otherFile = cursor.number(2);
      const std::uint64_t base = cursor.number(baseBytes);
      const std::uint64_t extents = cursor.number(2);
      if (extents != 1) {
        cursor.take(static_cast<std::size_t>(extents) * (indexBytes + offsetBytes + lengthBytes));
        continue;
      }
      cursor.take(indexBytes);
      const std::uint64_t offset = cursor.number(offsetBytes);
      const std::uint64_t length = cursor.number(lengthBytes);
      if (otherFile != 0 || method > 1) continue;
      place(item, method == 0 ? file_ : embedded, base, offset, length);
    }
  }

  void place(ItemID item, Bytes bytes, std::uint64_t base, std::uint64_t offset,
             std::uint64_t length) {
    if (base > bytes.size() || offset > bytes.size() - base) return;
    const std::uint64_t begin = base + offset;
    if (length > bytes.size() - begin) return;
    places_.emplace(
        item, bytes.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(length)));
  }

  void readProperties() {
    const Bytes properties = contentOf(meta_, "iprp");
    std::vector<Box> list;
    for (Bytes boxes = contentOf(properties, "ipco"); const auto box = nextBox(boxes);)
      list.push_back(*box);
    ByteCursor cursor{contentOf(properties, "ipma")};
    const std::uint64_t versionAndFlags = cursor.number(4);
    const std::size_t idBytes = versionAndFlags >> 24U == 0 ? 2 : 4;
    const std::size_t indexBytes = (versionAndFlags & 1U) != 0 ? 2 : 1;
    const std::uint64_t indexBits = indexBytes == 2 ? 0x7FFF : 0x7F;
    for (std::uint64_t left = cursor.number(4); left > 0 && !cursor.hasFailed(); --left) {
      std::vector<Box>& own = properties_[cursor.number(idBytes)];
      for (std::uint64_t count = cursor.number(1); count > 0; --count) {
        const std::uint64_t index = cursor.number(indexBytes) & indexBits;
        if (index > 0 && index <= list.size()) own.push_back(list[index - 1]);
      }
    }
  }

  Bytes file_;
  Bytes meta_;
  std::map<ItemID, Bytes> types_;
  std::map<ItemID, Bytes> places_;
  std::map<ItemID, std::vector<Box>> properties_;
};

/// Returns the parameter sets of a decoder configuration (ISO/IEC 14496-15, 8.3.3.1); empty unless
/// the lengths of units have four bytes.
std::string parameterSetsOf(Bytes configuration) {
  ByteCursor cursor{configuration};
  cursor.take(21);
  if ((cursor.number(1) & 3U) != 3) return {};
  std::string units;
  for (std::uint64_t arrays = cursor.number(1); arrays > 0; --arrays) {
    cursor.take(1);
    for (std::uint64_t left = cursor.number(2); left > 0 && !cursor.hasFailed(); --left) {
      const Bytes length = cursor.take(2);
      const Bytes unit = cursor.take(static_cast<std::size_t>(bigEndian(length)));
      units.append(2, '\0').append(length).append(unit);
    }
  }
  return cursor.hasFailed() ? std::string{} : units;
}

struct Size {
  std::uint64_t width = 0;
  std::uint64_t height = 0;
  friend bool operator==(const Size&, const Size&) = default;
};

Size sizeOf(Bytes extents) {
  ByteCursor cursor{from(extents, 4)};
  const std::uint64_t width = cursor.number(4);
  return {width, cursor.number(4)};
}

/// Applies the properties of the whole picture. Returns false for properties that are not supported
/// here.
bool takeProperties(const std::vector<Box>& properties, HeifTiles& picture) {
  constexpr Bytes harmless[] = {"ispe", "colr", "pixi", "clli", "mdcv", "udes", "altt"};
  for (const Box& property : properties) {
    const bool isTurn = property.type == "irot" && property.content.size() == 1;
    if (isTurn && picture.quarterTurns == 0) {
      picture.quarterTurns = property.content.front() & 3;
    } else if (std::find(std::begin(harmless), std::end(harmless), property.type) ==
               std::end(harmless)) {
      return false;
    }
  }
  return true;
}

bool takeLayout(Bytes layout, HeifTiles& picture) {
  ByteCursor cursor{layout};
  const std::uint64_t versionAndFlags = cursor.number(2);
  picture.rows = static_cast<std::uint32_t>(cursor.number(1)) + 1;
  picture.columns = static_cast<std::uint32_t>(cursor.number(1)) + 1;
  const std::size_t sizeBytes = (versionAndFlags & 1U) != 0 ? 4 : 2;
  picture.width = static_cast<std::uint32_t>(cursor.number(sizeBytes));
  picture.height = static_cast<std::uint32_t>(cursor.number(sizeBytes));
  return versionAndFlags < 2 && !cursor.hasFailed();
}

/// Returns true if this number of tiles covers the length, and one less would not.
bool covers(std::uint64_t tile, std::uint64_t count, std::uint64_t length) {
  return length > 0 && tile * count >= length && tile * (count - 1) < length;
}

/// Adds the tiles. Returns false unless all are alike.
bool takeTiles(const Items& items, const std::vector<ItemID>& tiles, HeifTiles& picture) {
  Bytes configuration;
  Size size;
  for (const ItemID tile : tiles) {
    Bytes ownConfiguration;
    Size ownSize;
    for (const Box& property : items.propertiesOf(tile)) {
      if (property.type == "hvcC") ownConfiguration = property.content;
      if (property.type == "ispe") ownSize = sizeOf(property.content);
      const bool changes =
          property.type == "irot" || property.type == "imir" || property.type == "clap";
      if (changes) return false;
    }
    if (picture.tiles.empty()) {
      configuration = ownConfiguration;
      size = ownSize;
    }
    const Bytes bytes = items.contentOfItem(tile);
    const bool isAlike = ownConfiguration.data() == configuration.data() && ownSize == size;
    if (items.typeOf(tile) != "hvc1" || bytes.empty() || !isAlike) return false;
    picture.tiles.push_back(bytes);
  }
  if (!covers(size.width, picture.columns, picture.width) ||
      !covers(size.height, picture.rows, picture.height))
    return false;
  picture.tileWidth = static_cast<std::uint32_t>(size.width);
  picture.tileHeight = static_cast<std::uint32_t>(size.height);
  picture.parameterSets = parameterSetsOf(configuration);
  return !picture.parameterSets.empty();
}

}  // namespace

std::optional<HeifTiles> readHeifTiles(std::span<const char> file) {
  const Items items{Bytes{file.data(), file.size()}};
  HeifTiles picture;
  const std::vector<ItemID> tiles = items.sourcesOf(items.primary);
  const bool isGrid = items.typeOf(items.primary) == "grid" && tiles.size() <= mostTiles &&
                      takeProperties(items.propertiesOf(items.primary), picture) &&
                      takeLayout(items.contentOfItem(items.primary), picture) &&
                      tiles.size() == std::size_t{picture.rows} * picture.columns &&
                      takeTiles(items, tiles, picture);
  return isGrid ? std::optional{std::move(picture)} : std::nullopt;
}

}  // namespace tavrix
