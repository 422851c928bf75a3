#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "conversion/StillMetadata.h"

namespace tavrix {

/// Pixels of a still, row by row.
class PixelRows {
 public:
  virtual ~PixelRows() = default;
  /// The row, `width * channels` values of one byte, of two in the machine's order where `bits` is
  /// above 8. Valid until the next call. Rows are asked for from the top on, each once, unless
  /// `anyOrder`.
  virtual const std::byte* row(std::uint32_t y) = 0;

  std::uint32_t width = 0;
  std::uint32_t height = 0;
  int channels = 3;  ///< 1 grey, 2 grey and opacity, 3 RGB, 4 RGB and opacity
  int bits = 8;      ///< of one value, 8 to 16
  bool anyOrder = false;
  bool isPremultiplied = false;  ///< the colours hold their opacity already
};

/// Pixels as they lie in most HEIF files, and in JPEG: luma and two chroma planes of 8 bits, full
/// range, by the matrix of ITU-R BT.601.
struct YcbcrPlanes {
  struct Plane {
    const std::uint8_t* begin = nullptr;
    std::size_t stride = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
  };
  std::array<Plane, 3> planes;
  int horizontalSampling = 1;  ///< luma values for one of chroma
  int verticalSampling = 1;
  std::shared_ptr<const void> owner{};
};

/// A still as its file holds it: rows or planes, and what goes with them.
struct DecodedStill {
  StillMetadata metadata{};
  std::uint32_t width = 0;  ///< as decoded, before `orientation`
  std::uint32_t height = 0;
  int orientation = 1;  ///< 1 to 8 as in Exif, what is left to turn
  bool isCropped = false;
  bool isSubsampled = false;  ///< its colours are stored at half the resolution
  std::unique_ptr<PixelRows> rows{};
  std::optional<YcbcrPlanes> planes{};
};

/// What is taken on of one still.
struct StillLimits {
  static constexpr std::uint64_t maxPixels = 100'000'000;
  static constexpr std::uint32_t maxSide = 65'500;  ///< JPEG has no larger ones
  static constexpr std::uint64_t maxBytes = std::uint64_t{512} << 20U;
  static constexpr std::size_t maxMetadata = std::size_t{16} << 20U;
};
/// Throws ConversionError for a size that is none or beyond the limits.
void checkStillSize(std::uint64_t width, std::uint64_t height);

/// One reader for each kind of file. All throw ConversionError. The bytes must outlive the result;
/// that of HEIF may change them.
DecodedStill decodeHeif(std::span<char> source);
DecodedStill decodePng(std::span<const char> source);
DecodedStill decodeTiff(std::span<const char> source);
DecodedStill decodeWebp(std::span<const char> source);

}  // namespace tavrix
