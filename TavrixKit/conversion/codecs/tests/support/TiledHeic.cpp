#include "conversion/codecs/tests/support/TiledHeic.h"

#include <vector>

#include "device/metadata/Bytes.h"

namespace tavrix {
namespace {

constexpr int tileSide = 64;

std::string number(std::uint64_t value, int bytes) {
  std::string text;
  for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8)
    text += static_cast<char>(value >> static_cast<unsigned>(shift));
  return text;
}
std::string u16(std::uint64_t value) { return number(value, 2); }
std::string u32(std::uint64_t value) { return number(value, 4); }
std::string box(const std::string& type, const std::string& content) {
  return u32(8 + content.size()) + type + content;
}
/// Returns a box with version and flags.
std::string fullBox(const std::string& type, std::uint64_t version, std::uint64_t flags,
                    const std::string& content) {
  return box(type, number(version, 1) + number(flags, 3) + content);
}

/// Returns the first box of a type, with its header.
std::string boxOf(const std::string& file, const std::string& type) {
  const std::size_t begin = file.find(type) - 4;
  return file.substr(begin, static_cast<std::size_t>(bigEndian(file.substr(begin, 4))));
}

/// Returns the part of a picture in a tile; beyond the picture its edge is repeated.
TestPicture tileOf(const TestPicture& picture, int left, int top) {
  return TestPicture::make(tileSide, tileSide, 3, 8, [&](int x, int y, int c) {
    const int column = std::min(left + x, picture.width - 1);
    const int row = std::min(top + y, picture.height - 1);
    return picture.values[static_cast<std::size_t>((row * picture.width + column) * 3 + c)];
  });
}

std::string properties(const std::string& configuration, const TestPicture& picture,
                       std::size_t tiles, int quarterTurns) {
  const auto extents = [](int width, int height) {
    return fullBox("ispe", 0, 0,
                   u32(static_cast<unsigned>(width)) + u32(static_cast<unsigned>(height)));
  };
  const std::string list = configuration + extents(tileSide, tileSide) +
                           extents(picture.width, picture.height) +
                           box("irot", number(static_cast<unsigned>(quarterTurns), 1));
  std::string owners = u32(tiles + 1) + u16(1) + "\2\3\x84";
  for (std::size_t i = 0; i < tiles; ++i) owners += u16(2 + i) + "\2\x81\2";
  return box("iprp", box("ipco", list) + fullBox("ipma", 0, 0, owners));
}

std::string items(std::size_t tiles) {
  std::string entries = u16(tiles + 1) + fullBox("infe", 2, 0, u16(1) + u16(0) + "grid" + '\0');
  std::string sources = u16(1) + u16(tiles);
  for (std::size_t i = 0; i < tiles; ++i) {
    entries += fullBox("infe", 2, 1, u16(2 + i) + u16(0) + "hvc1" + '\0');
    sources += u16(2 + i);
  }
  return fullBox("iinf", 0, 0, entries) + fullBox("iref", 0, 0, box("dimg", sources));
}

/// Returns the locations of the picture, in the box "idat", and of the tiles, one after another
/// from `begin`.
std::string places(std::size_t begin, const std::vector<std::string>& tiles) {
  std::string text = u16(0x4400) + u16(tiles.size() + 1);
  text += u16(1) + u16(1) + u16(0) + u16(1) + u32(0) + u32(8);
  for (std::size_t i = 0; i < tiles.size(); begin += tiles[i].size(), ++i)
    text += u16(2 + i) + u16(0) + u16(0) + u16(1) + u32(begin) + u32(tiles[i].size());
  return fullBox("iloc", 1, 0, text);
}

}  // namespace

std::string tiledHeicOf(const TestPicture& picture, int quarterTurns) {
  const int columns = (picture.width + tileSide - 1) / tileSide;
  const int rows = (picture.height + tileSide - 1) / tileSide;
  std::vector<std::string> tiles;
  std::string configuration;
  for (int i = 0; i < rows * columns; ++i) {
    const std::string file =
        heicOf(tileOf(picture, i % columns * tileSide, i / columns * tileSide));
    configuration = boxOf(file, "hvcC");
    tiles.push_back(boxOf(file, "mdat").substr(8));
  }
  const std::string layout = u16(0) + number(static_cast<unsigned>(rows - 1), 1) +
                             number(static_cast<unsigned>(columns - 1), 1) +
                             u16(static_cast<unsigned>(picture.width)) +
                             u16(static_cast<unsigned>(picture.height));
  const std::string type = box("ftyp", "heic" + u32(0) + "mif1heic");
  const auto meta = [&](std::size_t begin) {
    return fullBox("meta", 0, 0,
                   fullBox("hdlr", 0, 0, u32(0) + "pict" + std::string(13, '\0')) +
                       fullBox("pitm", 0, 0, u16(1)) + items(tiles.size()) +
                       properties(configuration, picture, tiles.size(), quarterTurns) +
                       places(begin, tiles) + box("idat", layout));
  };
  std::string media;
  for (const std::string& tile : tiles) media += tile;
  const std::size_t begin = type.size() + meta(0).size() + 8;
  return type + meta(begin) + box("mdat", media);
}

}  // namespace tavrix
