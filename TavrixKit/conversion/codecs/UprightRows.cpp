#include "conversion/codecs/UprightRows.h"

#include <algorithm>
#include <cstring>

namespace tavrix {
namespace {

std::size_t pixelBytes(const PixelRows& rows) {
  return static_cast<std::size_t>(rows.channels) * (rows.bits > 8 ? 2 : 1);
}

/// Keeps all rows in memory.
class KeptRows : public PixelRows {
 public:
  explicit KeptRows(PixelRows& rows) : PixelRows(rows) {
    rowBytes_ = width * pixelBytes(rows);
    bytes_.resize(rowBytes_ * height);
    for (std::uint32_t y = 0; y < height; ++y)
      std::memcpy(bytes_.data() + y * rowBytes_, rows.row(y), rowBytes_);
    anyOrder = true;
  }
  const std::byte* row(std::uint32_t y) override { return bytes_.data() + y * rowBytes_; }

 private:
  std::size_t rowBytes_ = 0;
  std::vector<std::byte> bytes_;
};

/// Rows of a turned or mirrored picture, several at a time: a column of these rows is one row of
/// the source, which is then read once for all of them.
class TurnedRows : public PixelRows {
 public:
  TurnedRows(std::unique_ptr<PixelRows> rows, int orientation)
      : PixelRows(*rows), rows_(std::move(rows)), pixelBytes_(pixelBytes(*rows_)) {
    isTransposed_ = orientation >= 5;
    mirrorsColumns_ = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
    mirrorsRows_ = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
    if (isTransposed_) std::swap(width, height);
    anyOrder = false;
    buffer_.resize(width * pixelBytes_ * (isTransposed_ ? rowsAtOnce : 1));
  }

  const std::byte* row(std::uint32_t y) override {
    if (!isTransposed_) return mirrored(rows_->row(mirrorsRows_ ? height - 1 - y : y));
    if (y % rowsAtOnce == 0) gather(y);
    return buffer_.data() + (y % rowsAtOnce) * width * pixelBytes_;
  }

 private:
  static constexpr std::uint32_t rowsAtOnce = 16;

  const std::byte* mirrored(const std::byte* from) {
    if (!mirrorsColumns_) return from;
    for (std::size_t x = 0; x < width; ++x) {
      std::memcpy(buffer_.data() + x * pixelBytes_, from + (width - 1 - x) * pixelBytes_,
                  pixelBytes_);
    }
    return buffer_.data();
  }
  /// Column `x` of the result is a row of the source, and row `y` of the result is a column there.
  void gather(std::uint32_t top) {
    const std::uint32_t count = std::min(rowsAtOnce, height - top);
    for (std::uint32_t x = 0; x < width; ++x) {
      const std::byte* const from = rows_->row(mirrorsRows_ ? width - 1 - x : x);
      for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t column = mirrorsColumns_ ? height - 1 - top - i : top + i;
        std::memcpy(buffer_.data() + (std::size_t{i} * width + x) * pixelBytes_,
                    from + column * pixelBytes_, pixelBytes_);
      }
    }
  }

  std::unique_ptr<PixelRows> rows_;
  std::size_t pixelBytes_;
  bool isTransposed_ = false;
  bool mirrorsColumns_ = false;  ///< of the source
  bool mirrorsRows_ = false;
  std::vector<std::byte> buffer_;
};

/// Bayer's threshold matrix, 0 to 63.
constexpr std::uint8_t thresholds[8][8] = {
    {0, 32, 8, 40, 2, 34, 10, 42},  {48, 16, 56, 24, 50, 18, 58, 26},
    {12, 44, 4, 36, 14, 46, 6, 38}, {60, 28, 52, 20, 62, 30, 54, 22},
    {3, 35, 11, 43, 1, 33, 9, 41},  {51, 19, 59, 27, 49, 17, 57, 25},
    {15, 47, 7, 39, 13, 45, 5, 37}, {63, 31, 55, 23, 61, 29, 53, 21}};

}  // namespace

std::unique_ptr<PixelRows> uprightRows(std::unique_ptr<PixelRows> rows, int orientation) {
  if (orientation == 1) return rows;
  const bool needsAll = orientation >= 3;
  if (needsAll && !rows->anyOrder) rows = std::make_unique<KeptRows>(*rows);
  return std::make_unique<TurnedRows>(std::move(rows), orientation);
}

JpegRow::JpegRow(const PixelRows& rows)
    : width_(rows.width),
      inputChannels_(rows.channels),
      channels_(rows.channels <= 2 ? 1 : 3),
      white_((1U << static_cast<unsigned>(rows.bits)) - 1),
      isPremultiplied_(rows.isPremultiplied),
      isPlain_(rows.bits == 8 && rows.channels == channels_),
      isDeep_(rows.bits > 8) {
  if (!isPlain_) row_.resize(std::size_t{width_} * static_cast<std::size_t>(channels_));
}

template <typename Value>
void JpegRow::convert(const Value* from, std::uint32_t y) {
  const bool hasAlpha = inputChannels_ != channels_;
  std::uint8_t* to = row_.data();
  for (std::uint32_t x = 0; x < width_; ++x, from += inputChannels_) {
    const std::uint32_t alpha = hasAlpha ? std::min<std::uint32_t>(from[channels_], white_) : 0;
    // Half a step, for rounding, if no dithering is needed.
    const std::uint64_t threshold = isDeep_ ? 2U * thresholds[y % 8][x % 8] + 1 : 64U;
    for (int c = 0; c < channels_; ++c) {
      std::uint64_t value = std::min<std::uint32_t>(from[c], white_);
      if (hasAlpha && isPremultiplied_) {
        value = std::min<std::uint64_t>(value + white_ - alpha, white_);
      } else if (hasAlpha) {
        value = (value * alpha + std::uint64_t{white_} * (white_ - alpha) + white_ / 2) / white_;
      }
      *to++ = static_cast<std::uint8_t>((value * 255 * 128 + threshold * white_) /
                                        (std::uint64_t{white_} * 128));
    }
  }
}

const std::uint8_t* JpegRow::make(const std::byte* row, std::uint32_t y) {
  if (isPlain_) return reinterpret_cast<const std::uint8_t*>(row);
  if (isDeep_) {
    convert(reinterpret_cast<const std::uint16_t*>(row), y);
  } else {
    convert(reinterpret_cast<const std::uint8_t*>(row), y);
  }
  return row_.data();
}

}  // namespace tavrix
