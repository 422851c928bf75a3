#include "device/thumbnails/HeifAssembly.h"

#include <algorithm>
#include <array>

#include "device/thumbnails/IsoBoxWriter.h"

namespace tavrix {
namespace {

using isobox::box;
using isobox::fullBox;
using isobox::number;

constexpr std::uint64_t itemNumber = 1;

std::string typeBox(std::string_view type) {
  const std::string brand = type == "av01" ? "avif" : "heic";
  return box("ftyp", brand + number(0, 4) + "mif1" + brand);
}

std::string itemList(std::string_view type) {
  const std::string entry = number(itemNumber, 2) + number(0, 2) + std::string{type} + number(0, 1);
  return fullBox("iinf", 0, number(1, 2) + fullBox("infe", 0x02000000, entry));
}

std::string propertyBoxes(const std::vector<HeifProperty>& properties) {
  constexpr std::array<std::string_view, 5> essential{"hvcC", "av1C", "irot", "imir", "clap"};
  std::string boxes;
  std::string indexes;
  for (const HeifProperty& property : properties) {
    boxes += box(property.type, property.content);
    const bool isEssential =
        std::find(essential.begin(), essential.end(), property.type) != essential.end();
    indexes += number((indexes.size() + 1) | (isEssential ? 0x80U : 0U), 1);
  }
  const std::string entry = number(itemNumber, 2) + number(indexes.size(), 1) + indexes;
  return box("iprp", box("ipco", boxes) + fullBox("ipma", 0, number(1, 4) + entry));
}

/// Returns the box that locates the item at an offset of the file.
std::string location(std::uint64_t offset, std::uint64_t length) {
  const std::string sizes = number(0x4400, 2);
  const std::string entry = number(itemNumber, 2) + number(0, 2) + number(1, 2);
  return fullBox("iloc", 0, sizes + number(1, 2) + entry + number(offset, 4) + number(length, 4));
}

}  // namespace

std::string heifHead(std::string_view type, const std::vector<HeifProperty>& properties,
                     std::uint64_t length) {
  const std::string handler = number(0, 4) + "pict" + std::string(13, '\0');
  const std::string common = fullBox("hdlr", 0, handler) +
                             fullBox("pitm", 0, number(itemNumber, 2)) + itemList(type) +
                             propertyBoxes(properties);
  const std::string start = typeBox(type);
  const auto meta = [&](std::uint64_t offset) {
    return fullBox("meta", 0, common + location(offset, length));
  };
  const std::string media = isobox::boxHead("mdat", length);
  return start + meta(start.size() + meta(0).size() + media.size()) + media;
}

}  // namespace tavrix
