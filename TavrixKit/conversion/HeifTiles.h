#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// The primary picture of a HEIF file that is made of equal tiles of HEVC, as phones write it
/// (ISO/IEC 23008-12, 6.6.2.3).
struct HeifTiles {
  std::uint32_t width = 0;  ///< of the whole picture, before it is turned
  std::uint32_t height = 0;
  std::uint32_t columns = 0;
  std::uint32_t rows = 0;
  std::uint32_t tileWidth = 0;
  std::uint32_t tileHeight = 0;
  int quarterTurns = 0;       ///< to the left, 0 to 3
  std::string parameterSets;  ///< of all tiles: units, each behind its length in four bytes
  std::vector<std::string_view> tiles;  ///< the same form, row by row; they point into the file

  friend bool operator==(const HeifTiles&, const HeifTiles&) = default;
};

/// Nothing for a picture that is not made so, that is cropped or mirrored, or where anything is
/// unusual: who decodes the whole format then sees to it. Sizes are not held against any limit, but
/// the tiles cover the picture with none to spare.
std::optional<HeifTiles> readHeifTiles(std::span<const char> file);

}  // namespace tavrix
