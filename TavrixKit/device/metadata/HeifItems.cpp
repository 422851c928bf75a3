#include "device/metadata/HeifItems.h"

#include <algorithm>

#include "device/metadata/Bytes.h"

namespace tavrix {
namespace {

/// Returns the second of two consecutive NUL-terminated texts; the first begins at `at`.
std::string_view secondText(std::string_view bytes, std::size_t at) {
  const auto first = bytes.find('\0', at);
  if (first == std::string_view::npos) return {};
  return bytes.substr(first + 1, bytes.find('\0', first + 1) - first - 1);
}

}  // namespace

std::optional<HeifItems> HeifItems::open(FileBytes& file) {
  const auto meta = IsoBoxes::find(file, 0, file.size(), "meta");
  if (!meta || meta->length() <= 4) return std::nullopt;
  return HeifItems{file, *meta};
}

std::string_view HeifItems::content(std::string_view type) const {
  const auto found = box(type);
  return found ? contentOf(*file_, *found).value_or("") : "";
}

std::uint64_t HeifItems::primaryItem() const {
  ByteCursor cursor{content("pitm")};
  const std::uint64_t version = cursor.number(1);
  cursor.take(3);
  return cursor.number(version == 0 ? 2 : 4);
}

std::vector<HeifItems::Entry> HeifItems::entries() const {
  std::vector<Entry> result;
  const auto list = box("iinf");
  const auto version = list ? file_->at(list->begin, 1) : std::nullopt;
  if (!version) return result;
  IsoBoxes boxes{*file_, list->begin + 4 + (version->front() == 0 ? 2U : 4U), list->end};
  while (const auto entry = boxes.next()) {
    const auto bytes = entry->type == "infe" ? contentOf(*file_, *entry) : std::nullopt;
    if (!bytes) continue;
    ByteCursor cursor{*bytes};
    const std::uint64_t entryVersion = cursor.number(1);
    cursor.take(3);
    const std::uint64_t item = cursor.number(entryVersion < 3 ? 2 : 4);
    cursor.take(2);
    // Older versions have no item types.
    if (entryVersion < 2) continue;
    result.push_back({item, cursor.take(4), secondText(*bytes, entryVersion < 3 ? 12 : 14)});
  }
  return result;
}

std::vector<std::uint64_t> HeifItems::itemsOf(std::string_view type,
                                              std::string_view contentType) const {
  std::vector<std::uint64_t> items;
  for (const Entry& entry : entries()) {
    if (entry.type == type && (contentType.empty() || entry.contentType == contentType))
      items.push_back(entry.item);
  }
  return items;
}

std::string_view HeifItems::typeOf(std::uint64_t item) const {
  const auto all = entries();
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const Entry& entry) { return entry.item == item; });
  return found == all.end() ? std::string_view{} : found->type;
}

std::vector<std::uint64_t> HeifItems::referringToPrimary(std::string_view type) const {
  std::vector<std::uint64_t> items;
  const auto references = box("iref");
  const auto version = references ? file_->at(references->begin, 1) : std::nullopt;
  if (!version) return items;
  const std::size_t idBytes = version->front() == 0 ? 2 : 4;
  IsoBoxes boxes{*file_, references->begin + 4, references->end};
  while (const auto reference = boxes.next()) {
    const auto bytes = reference->type == type ? contentOf(*file_, *reference) : std::nullopt;
    if (!bytes) continue;
    ByteCursor cursor{*bytes};
    const std::uint64_t item = cursor.number(idBytes);
    for (std::uint64_t count = cursor.number(2); count > 0 && !cursor.hasFailed(); --count) {
      if (cursor.number(idBytes) != primary_ || cursor.hasFailed()) continue;
      items.push_back(item);
      break;
    }
  }
  return items;
}

std::vector<std::uint64_t> HeifItems::otherViews() const {
  const auto groups = box("grpl");
  if (!groups) return {};
  IsoBoxes boxes{*file_, groups->begin, groups->end};
  while (const auto group = boxes.next()) {
    const auto bytes = group->type == "ster" ? contentOf(*file_, *group) : std::nullopt;
    if (!bytes) continue;
    ByteCursor cursor{*bytes};
    cursor.take(8);  // version, flags and the number of the group
    std::vector<std::uint64_t> views;
    for (std::uint64_t count = cursor.number(4); count > 0 && !cursor.isAtEnd(); --count) {
      views.push_back(cursor.number(4));
    }
    if (std::erase(views, primary_) > 0) return views;
  }
  return {};
}

std::vector<std::uint64_t> HeifItems::thumbnails() const { return referringToPrimary("thmb"); }

std::uint64_t HeifItems::describing(const std::vector<std::uint64_t>& items) const {
  if (items.empty()) return 0;
  if (items.size() == 1) return items.front();
  const auto describers = referringToPrimary("cdsc");
  const auto found =
      std::find_first_of(items.begin(), items.end(), describers.begin(), describers.end());
  return found == items.end() ? items.front() : *found;
}

std::optional<HeifItems::Extent> HeifItems::extentOf(std::uint64_t item) const {
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

std::optional<HeifItems::Extent> HeifItems::exif() const {
  const auto extent = extentOf(describing(itemsOf("Exif", {})));
  // The item begins with a number: the distance from the end of that number to the TIFF header.
  const auto distance = extent ? file_->at(extent->begin, 4) : std::nullopt;
  if (!distance) return std::nullopt;
  const std::uint64_t skipped = 4 + bigEndian(*distance);
  if (skipped >= extent->length) return std::nullopt;
  return Extent{extent->begin + skipped, extent->length - skipped};
}

std::optional<HeifItems::Extent> HeifItems::xmp() const {
  const auto items = itemsOf("mime", "application/rdf+xml");
  const auto describers = referringToPrimary("cdsc");
  const auto found =
      std::find_first_of(items.begin(), items.end(), describers.begin(), describers.end());
  return found == items.end() ? std::nullopt : extentOf(*found);
}

/// Returns the indexes of the properties, counted from 1.
std::vector<std::uint64_t> HeifItems::indexesOf(std::uint64_t item,
                                                const IsoBox& properties) const {
  std::vector<std::uint64_t> result;
  const auto found = IsoBoxes::find(*file_, properties.begin, properties.end, "ipma");
  ByteCursor cursor{found ? contentOf(*file_, *found).value_or("") : ""};
  const std::uint64_t version = cursor.number(1);
  const bool hasLargeIndexes = (cursor.number(3) & 1U) != 0;
  for (std::uint64_t left = cursor.number(4); left > 0 && !cursor.hasFailed(); --left) {
    const std::uint64_t owner = cursor.number(version < 1 ? 2 : 4);
    for (std::uint64_t count = cursor.number(1); count > 0; --count) {
      // The first bit is set if a reader must understand the property.
      const std::uint64_t index =
          hasLargeIndexes ? cursor.number(2) & 0x7FFFU : cursor.number(1) & 0x7FU;
      if (owner == item && !cursor.hasFailed()) result.push_back(index);
    }
  }
  return result;
}

std::vector<IsoBox> HeifItems::propertiesOf(std::uint64_t item) const {
  std::vector<IsoBox> result;
  const auto properties = box("iprp");
  const auto list = properties ? IsoBoxes::find(*file_, properties->begin, properties->end, "ipco")
                               : std::nullopt;
  if (!list) return result;
  std::vector<IsoBox> all;
  for (IsoBoxes boxes{*file_, list->begin, list->end}; const auto property = boxes.next();)
    all.push_back(*property);
  constexpr std::size_t maxProperties = 64;
  for (const std::uint64_t index : indexesOf(item, *properties)) {
    if (result.size() == maxProperties) break;
    if (index > 0 && index <= all.size()) result.push_back(all[index - 1]);
  }
  return result;
}

std::optional<IsoBox> HeifItems::propertyOfPrimary(std::string_view type) const {
  const auto properties = propertiesOf(primary_);
  const auto found = std::find_if(properties.begin(), properties.end(),
                                  [&](const IsoBox& property) { return property.type == type; });
  return found == properties.end() ? std::nullopt : std::optional{*found};
}

}  // namespace tavrix
