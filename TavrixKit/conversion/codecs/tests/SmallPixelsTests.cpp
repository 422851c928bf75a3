#include "conversion/codecs/SmallPixels.h"

#include <gmock/gmock.h>

#include <cmath>

#include "conversion/codecs/FilmStill.h"

namespace tavrix {
namespace {

/// Returns a grey picture whose outer rows or columns are black, mixed with light at the edge.
SmallPixels withBars(std::uint32_t width, std::uint32_t height, std::uint32_t bar, bool areRows,
                     std::uint8_t black) {
  SmallPixels pixels{width, height, 1};
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      const std::uint32_t at = areRows ? y : x;
      const std::uint32_t fromEdge = std::min(at, (areRows ? height : width) - 1 - at);
      pixels.values.push_back(fromEdge + 1 < bar ? black : fromEdge < bar ? 90 : 180);
    }
  }
  return pixels;
}

PixelSize sizeWithoutBars(SmallPixels pixels, const PixelSize& full) {
  const SmallPixels result = withoutBars(std::move(pixels), full);
  EXPECT_EQ(result.values.size(), std::size_t{result.width} * result.height);
  return {result.width, result.height};
}

TEST(SmallPixels, bars_areCutOnlyIfTheyAreBlackAndBeyondTheShape) {
  const PixelSize wide{6000, 4000};
  EXPECT_EQ(sizeWithoutBars(withBars(160, 120, 7, true, 3), wide), (PixelSize{160, 107}));
  EXPECT_EQ(sizeWithoutBars(withBars(160, 120, 15, false, 3), {3000, 2771}), (PixelSize{130, 120}));
  // As camera and picture agree about the shape, the black belongs to the picture.
  EXPECT_EQ(sizeWithoutBars(withBars(160, 120, 7, true, 3), {4000, 3000}), (PixelSize{160, 120}));
  EXPECT_EQ(sizeWithoutBars(withBars(160, 120, 7, true, 3), {0, 0}), (PixelSize{160, 120}));
  EXPECT_EQ(sizeWithoutBars(withBars(160, 120, 7, true, 40), wide), (PixelSize{160, 120}));
  EXPECT_EQ(sizeWithoutBars(withBars(160, 120, 2, true, 3), wide), (PixelSize{160, 120}));
  // A rounded side has no bars.
  EXPECT_EQ(sizeWithoutBars(withBars(320, 214, 1, true, 3), wide), (PixelSize{320, 214}));
  EXPECT_EQ(sizeWithoutBars(withBars(2, 2, 0, true, 3), {1, 60000}), (PixelSize{2, 2}));
}

TEST(SmallPixels, everyValue_isTheMeanOfItsArea) {
  const auto valueAt = [](std::uint32_t x, std::uint32_t y) { return (x * 37 + y * 91) % 256; };
  for (const PixelSize from : {PixelSize{1, 1}, PixelSize{7, 5}, PixelSize{64, 3}, {33, 50}}) {
    for (const PixelSize to : {PixelSize{1, 1}, PixelSize{5, 3}, PixelSize{7, 5}, {9, 20}}) {
      AreaAverage average{from, to, 1};
      for (std::uint32_t y = 0; y < from.height; ++y) {
        std::vector<std::uint8_t> row;
        for (std::uint32_t x = 0; x < from.width; ++x)
          row.push_back(static_cast<std::uint8_t>(valueAt(x, y)));
        average.add(row.data());
      }
      const auto overlap = [](std::uint32_t at, std::uint32_t source, double step) {
        return std::max(
            0.0, std::min((at + 1) * step, source + 1.0) - std::max(at * step, 1.0 * source));
      };
      const double stepX = 1.0 * from.width / to.width;
      const double stepY = 1.0 * from.height / to.height;
      const std::vector<std::uint8_t> result = average.take();
      ASSERT_EQ(result.size(), std::size_t{to.width} * to.height);
      for (std::uint32_t i = 0; i < result.size(); ++i) {
        double sum = 0;
        for (std::uint32_t y = 0; y < from.height; ++y)
          for (std::uint32_t x = 0; x < from.width; ++x)
            sum +=
                valueAt(x, y) * overlap(i % to.width, x, stepX) * overlap(i / to.width, y, stepY);
        ASSERT_NEAR(result[i], sum / (stepX * stepY), 0.51) << i;
      }
    }
  }
}

TEST(SmallPixels, size_keepsItsShape) {
  EXPECT_EQ(shrunkSize({4032, 3024}, 320), (PixelSize{320, 240}));
  EXPECT_EQ(shrunkSize({3024, 4032}, 320), (PixelSize{240, 320}));
  EXPECT_EQ(shrunkSize({320, 200}, 320), (PixelSize{320, 200}));
  EXPECT_EQ(shrunkSize({65500, 1}, 320), (PixelSize{320, 1}));
}

TEST(SmallPixels, matrix_hasItsOrientation) {
  // For each orientation, x' and y' of the unit vectors, rotated back by the player.
  constexpr int parts[8][4] = {{1, 0, 0, 1}, {-1, 0, 0, 1}, {-1, 0, 0, -1}, {1, 0, 0, -1},
                               {0, 1, 1, 0}, {0, 1, -1, 0}, {0, -1, -1, 0}, {0, -1, 1, 0}};
  for (int i = 0; i < 8; ++i) {
    const auto [a, b, c, d] = parts[i];
    constexpr int one = 1 << 16;
    EXPECT_EQ(orientationOf(DisplayMatrix{a * one, b * one, 0, c * one, d * one, 0, 0, 0, 1 << 30}),
              i + 1);
  }
}

}  // namespace
}  // namespace tavrix
