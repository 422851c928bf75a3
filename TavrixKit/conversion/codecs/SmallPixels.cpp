#include "conversion/codecs/SmallPixels.h"

#include <algorithm>
#include <cmath>

#include "conversion/codecs/UprightRows.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

PixelSize sizeOf(const YcbcrPlanes::Plane& plane) { return {plane.width, plane.height}; }

std::vector<std::uint8_t> shrunkPlane(const YcbcrPlanes::Plane& plane, const PixelSize& size) {
  AreaAverage average{sizeOf(plane), size, 1};
  for (std::uint32_t y = 0; y < plane.height; ++y) average.add(plane.begin + y * plane.stride);
  return average.take();
}

std::uint8_t clamped(float value) {
  return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

/// Converts luma and chroma to RGB in the way of JPEG (ITU-T T.871, 7).
SmallPixels shrunkPlanes(const YcbcrPlanes& planes, const PixelSize& size) {
  const auto luma = shrunkPlane(planes.planes[0], size);
  const auto blue = shrunkPlane(planes.planes[1], size);
  const auto red = shrunkPlane(planes.planes[2], size);
  SmallPixels pixels{size.width, size.height, 3};
  pixels.values.reserve(luma.size() * 3);
  for (std::size_t i = 0; i < luma.size(); ++i) {
    const auto y = static_cast<float>(luma[i]);
    const float cb = static_cast<float>(blue[i]) - 128;
    const float cr = static_cast<float>(red[i]) - 128;
    pixels.values.push_back(clamped(y + 1.402F * cr));
    pixels.values.push_back(clamped(y - 0.344136F * cb - 0.714136F * cr));
    pixels.values.push_back(clamped(y + 1.772F * cb));
  }
  return pixels;
}

SmallPixels shrunkRows(PixelRows& rows, const PixelSize& size) {
  JpegRow row{rows};
  AreaAverage average{{rows.width, rows.height}, size, row.channels()};
  for (std::uint32_t y = 0; y < rows.height; ++y) average.add(row.make(rows.row(y), y));
  return {size.width, size.height, row.channels(), average.take()};
}

class SmallRows : public PixelRows {
 public:
  explicit SmallRows(SmallPixels pixels) : pixels_(std::move(pixels)) {
    width = pixels_.width;
    height = pixels_.height;
    channels = pixels_.channels;
    anyOrder = true;
  }
  const std::byte* row(std::uint32_t y) override {
    const std::size_t stride = std::size_t{width} * static_cast<std::size_t>(channels);
    return reinterpret_cast<const std::byte*>(pixels_.values.data() + y * stride);
  }

 private:
  SmallPixels pixels_;
};

/// A rectangle of a picture.
struct Part {
  std::uint32_t left, top, width, height;
};

SmallPixels cut(const SmallPixels& pixels, const Part& part) {
  SmallPixels result{part.width, part.height, pixels.channels};
  const auto channels = static_cast<std::size_t>(pixels.channels);
  for (std::size_t y = part.top; y < part.top + part.height; ++y) {
    const auto* const begin = pixels.values.data() + (y * pixels.width + part.left) * channels;
    result.values.insert(result.values.end(), begin, begin + part.width * channels);
  }
  return result;
}

/// Returns true if compression can have made all pixels of the part from black ones.
bool isBlack(const SmallPixels& pixels, const Part& part) {
  constexpr std::uint64_t brightestMean = 20;
  constexpr std::uint8_t brightest = 72;
  const SmallPixels piece = cut(pixels, part);
  std::uint64_t sum = 0;
  for (const std::uint8_t value : piece.values) {
    if (value > brightest) return false;
    sum += value;
  }
  return sum <= brightestMean * piece.values.size();
}

/// Returns the number of rows or columns beyond the shape of the full picture.
std::uint32_t excess(std::uint32_t side, std::uint32_t other, std::uint32_t full,
                     std::uint32_t otherFull) {
  const std::uint64_t needed =
      (std::uint64_t{other} * full + otherFull / 2) / std::max<std::uint64_t>(otherFull, 1);
  return needed < side ? side - static_cast<std::uint32_t>(needed) : 0;
}

}  // namespace

PixelSize shrunkSize(const PixelSize& size, std::uint32_t longestSide) {
  const std::uint32_t longer = std::max(size.width, size.height);
  if (longer <= longestSide) return size;
  const auto side = [&](std::uint64_t pixels) {
    return static_cast<std::uint32_t>(
        std::max<std::uint64_t>((pixels * longestSide + longer / 2) / longer, 1));
  };
  return {side(size.width), side(size.height)};
}

SmallPixels shrunk(DecodedStill& still, std::uint32_t longestSide) {
  const PixelSize stored = still.planes ? sizeOf(still.planes->planes[0])
                                        : PixelSize{still.rows->width, still.rows->height};
  checkStillSize(stored.width, stored.height);
  const PixelSize size = shrunkSize(stored, longestSide);
  return still.planes ? shrunkPlanes(*still.planes, size) : shrunkRows(*still.rows, size);
}

SmallPixels withoutBars(SmallPixels pixels, const PixelSize& full) {
  if (full.width == 0 || full.height == 0) return pixels;
  const std::uint32_t rows = excess(pixels.height, pixels.width, full.height, full.width);
  const std::uint32_t columns = excess(pixels.width, pixels.height, full.width, full.height);
  const bool areRows = rows > 0;
  const std::uint32_t side = areRows ? pixels.height : pixels.width;
  const std::uint32_t count = areRows ? rows : columns;
  const auto part = [&](std::uint32_t begin, std::uint32_t length) {
    return areRows ? Part{0, begin, pixels.width, length} : Part{begin, 0, length, pixels.height};
  };
  // The size of a small picture is rounded, so one row more is no bar.
  if (count < 2 || count >= side) return pixels;
  const std::uint32_t before = count / 2;
  const std::uint32_t after = count - before;
  // The last row of a bar may be mixed with the picture.
  const bool hasBars =
      isBlack(pixels, part(0, std::max(before - 1, 1U))) &&
      isBlack(pixels, part(side - std::max(after - 1, 1U), std::max(after - 1, 1U)));
  return hasBars ? cut(pixels, part(before, side - count)) : pixels;
}

std::unique_ptr<PixelRows> rowsOf(SmallPixels pixels) {
  return std::make_unique<SmallRows>(std::move(pixels));
}

}  // namespace tavrix
