#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "conversion/codecs/StillMetadata.h"

namespace tavrix {

/// Pixels of a still, row by row.
class PixelRows {
 public:
  virtual ~PixelRows() = default;
  /// Returns the row: `width * channels` values, each of one byte, or of two bytes in native order
  /// if `bits` is above 8. Valid until the next call. Unless `anyOrder` is set, the caller must
  /// read the rows from the top, each once.
  virtual const std::byte* row(std::uint32_t y) = 0;

  std::uint32_t width = 0;
  std::uint32_t height = 0;
  int channels = 3;  ///< 1 grey, 2 grey and opacity, 3 RGB, 4 RGB and opacity
  int bits = 8;      ///< of one value, 8 to 16
  bool anyOrder = false;
  bool isPremultiplied = false;  ///< the colours are already multiplied by their opacity
};

/// Pixels in the form of most HEIF files and of JPEG: luma and two chroma planes of 8 bits, full
/// range, with the matrix of ITU-R BT.601.
struct YcbcrPlanes {
  struct Plane {
    const std::uint8_t* begin = nullptr;
    std::size_t stride = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
  };
  std::array<Plane, 3> planes;
  int horizontalSampling = 1;  ///< luma values per chroma value
  int verticalSampling = 1;
  std::shared_ptr<const void> owner{};
};

/// How to read a still.
struct StillReading {
  /// Fails for an animation or a file of several pages; otherwise its first or primary picture is
  /// read.
  bool rejectsSeveral = true;
  /// Turns a HEIF picture as its properties say; pictures of other formats are not turned yet.
  bool turnsHeif = true;
};

/// A still in the form of its file: rows or planes, and its metadata.
struct DecodedStill {
  StillMetadata metadata{};
  std::uint32_t width = 0;  ///< as decoded, before `orientation`
  std::uint32_t height = 0;
  int orientation = 1;    ///< 1 to 8 as in Exif, still to be applied
  bool isTurned = false;  ///< the pixels were turned as the file's properties say
  bool isCropped = false;
  bool isSubsampled = false;  ///< its colours are stored at half the resolution
  std::unique_ptr<PixelRows> rows{};
  std::optional<YcbcrPlanes> planes{};
};

/// The limits for one still.
struct StillLimits {
  static constexpr std::uint64_t maxPixels = 100'000'000;
  static constexpr std::uint32_t maxSide = 65'500;  ///< the maximum of libjpeg
  static constexpr std::uint64_t maxBytes = std::uint64_t{512} << 20U;
  static constexpr std::size_t maxMetadata = std::size_t{16} << 20U;
};
/// Throws ConversionError for a size that is zero or beyond the limits.
void checkStillSize(std::uint64_t width, std::uint64_t height);

/// Decodes a still of any format except JPEG, according to its content. Throws ConversionError. The
/// bytes must outlive the result and may be modified.
DecodedStill decodeStill(std::span<char> source, const StillReading& reading);

/// Decode a still of each file format. All throw ConversionError. The bytes must outlive the
/// result; decodeHeif() may modify them.
DecodedStill decodeHeif(std::span<char> source, const StillReading& reading);
DecodedStill decodePng(std::span<const char> source, const StillReading& reading);
DecodedStill decodeTiff(std::span<const char> source, const StillReading& reading);
DecodedStill decodeWebp(std::span<const char> source, const StillReading& reading);
/// Decodes a JPEG file at a half, a quarter or an eighth of its size if the longer side keeps
/// clearly more than `longestSide` pixels. A truncated file is decoded as far as it goes.
DecodedStill decodeJpeg(std::span<const char> source, std::uint32_t longestSide);

}  // namespace tavrix
