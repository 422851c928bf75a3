#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "conversion/codecs/AreaAverage.h"
#include "conversion/codecs/DecodedStill.h"

namespace tavrix {

/// The pixels of a small picture in memory, row by row.
struct SmallPixels {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  int channels = 3;  ///< 1 grey, 3 RGB
  std::vector<std::uint8_t> values{};

  friend bool operator==(const SmallPixels&, const SmallPixels&) = default;
};

/// Returns the size of the same shape whose longer side has `longestSide` pixels, each side at
/// least 1; the size itself if it is not larger.
PixelSize shrunkSize(const PixelSize& size, std::uint32_t longestSide);

/// Reads all pixels of a still and reduces them to a size of at most `longestSide`. Draws
/// transparency on white. Throws ConversionError.
SmallPixels shrunk(DecodedStill& still, std::uint32_t longestSide);

/// Returns the picture without the two bars that a camera adds to give it another shape than that
/// of `full`. Cuts only rows or columns beyond that shape, and only if they are almost black.
SmallPixels withoutBars(SmallPixels pixels, const PixelSize& full);

/// Returns the pixels as rows that can be read in any order.
std::unique_ptr<PixelRows> rowsOf(SmallPixels pixels);

}  // namespace tavrix
