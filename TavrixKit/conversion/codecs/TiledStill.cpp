#include "conversion/codecs/TiledStill.h"

#include <algorithm>
#include <vector>

#include "conversion/codecs/HevcDecoder.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

/// Returns true if tiles can be joined plane by plane: chroma has one value for four pixels.
bool isEven(const HeifTiles& picture) {
  return (picture.width | picture.height | picture.tileWidth | picture.tileHeight) % 2 == 0;
}

bool hasJpegColours(const AVFrame& tile, bool isTold) {
  const bool isFull = tile.color_range == AVCOL_RANGE_JPEG || tile.format == AV_PIX_FMT_YUVJ420P;
  const bool isSilent = tile.color_range == AVCOL_RANGE_UNSPECIFIED && isTold;
  const bool is601 = tile.colorspace == AVCOL_SPC_UNSPECIFIED ||
                     tile.colorspace == AVCOL_SPC_BT470BG || tile.colorspace == AVCOL_SPC_SMPTE170M;
  return (isFull || isSilent) && is601;
}

bool isOfSize(const AVFrame& tile, const HeifTiles& picture) {
  return (tile.format == AV_PIX_FMT_YUV420P || tile.format == AV_PIX_FMT_YUVJ420P) &&
         tile.width == static_cast<int>(picture.tileWidth) &&
         tile.height == static_cast<int>(picture.tileHeight);
}

/// One plane of the whole picture, which receives the tiles' planes one by one and turns them.
class TurnedPlane {
 public:
  TurnedPlane(std::uint32_t width, std::uint32_t height, int quarterTurns)
      : width_(width),
        height_(height),
        quarterTurns_(quarterTurns),
        bytes_(std::size_t{width} * height) {}

  YcbcrPlanes::Plane plane() const {
    const bool isLying = quarterTurns_ % 2 != 0;
    return {bytes_.data(), stride(), isLying ? height_ : width_, isLying ? width_ : height_};
  }

  /// Puts the tile's upper left corner at that position of the picture as stored. Parts beyond the
  /// picture are left out.
  void put(const std::uint8_t* tile, std::size_t tileStride, std::uint32_t left, std::uint32_t top,
           std::uint32_t tileWidth, std::uint32_t tileHeight) {
    const std::uint32_t width = std::min(tileWidth, width_ - left);
    const std::uint32_t height = std::min(tileHeight, height_ - top);
    for (std::uint32_t y = 0; y < height; y += block) {
      for (std::uint32_t x = 0; x < width; x += block) {
        putBlock(tile + y * tileStride + x, tileStride, left + x, top + y,
                 std::min(block, width - x), std::min(block, height - y));
      }
    }
  }

 private:
  /// Sized so that the source lines and target lines of a block fit into the cache together.
  static constexpr std::uint32_t block = 32;

  std::size_t stride() const { return quarterTurns_ % 2 != 0 ? height_ : width_; }

  void putBlock(const std::uint8_t* from, std::size_t fromStride, std::uint32_t left,
                std::uint32_t top, std::uint32_t width, std::uint32_t height) {
    const auto step = static_cast<std::ptrdiff_t>(stride());
    // Finds the target of the block's first pixel and the target steps to its next column and row.
    std::uint8_t* const to = bytes_.data();
    switch (quarterTurns_) {
      case 0:
        for (std::uint32_t y = 0; y < height; ++y)
          std::copy_n(from + y * fromStride, width, to + (top + y) * stride() + left);
        return;
      case 1:
        return move(from, fromStride, to + (width_ - 1 - left) * stride() + top, -step, 1, width,
                    height);
      case 2:
        return move(from, fromStride, to + (height_ - 1 - top) * stride() + (width_ - 1 - left), -1,
                    -step, width, height);
      default:
        return move(from, fromStride, to + left * stride() + (height_ - 1 - top), step, -1, width,
                    height);
    }
  }

  static void move(const std::uint8_t* from, std::size_t fromStride, std::uint8_t* to,
                   std::ptrdiff_t column, std::ptrdiff_t row, std::uint32_t width,
                   std::uint32_t height) {
    for (std::uint32_t x = 0; x < width; ++x) {
      const std::uint8_t* pixel = from + x;
      std::uint8_t* place = to + column * std::ptrdiff_t{x};
      for (std::uint32_t y = 0; y < height; ++y, pixel += fromStride, place += row) *place = *pixel;
    }
  }

  std::uint32_t width_;  ///< as stored
  std::uint32_t height_;
  int quarterTurns_;
  std::vector<std::uint8_t> bytes_;
};

using TurnedPlanes = std::array<TurnedPlane, 3>;

void put(const AVFrame& tile, std::uint32_t left, std::uint32_t top, TurnedPlanes& planes) {
  for (std::size_t i = 0; i < planes.size(); ++i) {
    const std::uint32_t scale = i == 0 ? 1 : 2;
    planes[i].put(tile.data[i], static_cast<std::size_t>(tile.linesize[i]), left / scale,
                  top / scale, static_cast<std::uint32_t>(tile.width) / scale,
                  static_cast<std::uint32_t>(tile.height) / scale);
  }
}

}  // namespace

std::optional<YcbcrPlanes> decodeTiles(const HeifTiles& picture, bool isTold) {
  if (!isEven(picture)) return std::nullopt;
  const TurnedPlane luma{picture.width, picture.height, picture.quarterTurns};
  const TurnedPlane chroma{picture.width / 2, picture.height / 2, picture.quarterTurns};
  const auto planes = std::make_shared<TurnedPlanes>(TurnedPlanes{luma, chroma, chroma});
  HevcDecoder decoder;
  for (std::uint32_t i = 0; i < picture.tiles.size(); ++i) {
    const AVFrame& tile = decoder.decode(picture.parameterSets, picture.tiles[i]);
    const bool isRight = isOfSize(tile, picture) && hasJpegColours(tile, isTold);
    if (!isRight && i == 0) return std::nullopt;
    if (!isRight) throw ConversionError{ConversionFailure::damagedInput};
    put(tile, i % picture.columns * picture.tileWidth, i / picture.columns * picture.tileHeight,
        *planes);
  }
  YcbcrPlanes result;
  for (std::size_t i = 0; i < planes->size(); ++i) result.planes[i] = (*planes)[i].plane();
  result.horizontalSampling = 2;
  result.verticalSampling = 2;
  result.owner = planes;
  return result;
}

}  // namespace tavrix
