#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// The primary picture of a HEIF file that consists of equal HEVC tiles, as phones write it
/// (ISO/IEC 23008-12, 6.6.2.3).
struct HeifTiles {
  std::uint32_t width = 0;  ///< of the whole picture, before it is turned
  std::uint32_t height = 0;
  std::uint32_t columns = 0;
  std::uint32_t rows = 0;
  std::uint32_t tileWidth = 0;
  std::uint32_t tileHeight = 0;
  int quarterTurns = 0;       ///< to the left, 0 to 3
  std::string parameterSets;  ///< of all tiles: units, each after its length in four bytes
  std::vector<std::string_view> tiles;  ///< in the same form, row by row; views into the file

  friend bool operator==(const HeifTiles&, const HeifTiles&) = default;
};

/// Returns nullopt if the picture does not consist of such tiles, is cropped or mirrored, or is
/// unusual in any way; the decoder for the whole format then handles it. Sizes are not checked
/// against any limit, but the tiles cover the picture, and no row or column of tiles is
/// superfluous.
std::optional<HeifTiles> readHeifTiles(std::span<const char> file);

}  // namespace tavrix
