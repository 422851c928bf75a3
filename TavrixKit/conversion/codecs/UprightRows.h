#pragma once

#include <memory>

#include "conversion/codecs/DecodedStill.h"

namespace tavrix {

/// Returns the rows turned upright according to an Exif orientation, 1 to 8. Rows that can only be
/// read in order are kept in memory if necessary.
std::unique_ptr<PixelRows> uprightRows(std::unique_ptr<PixelRows> rows, int orientation);

/// Converts one row to the form of JPEG: 8 bits, 1 or 3 values per pixel, transparency blended with
/// white. Deeper values are reduced by ordered dithering, so that a smooth sky stays smooth.
class JpegRow {
 public:
  explicit JpegRow(const PixelRows& rows);
  int channels() const { return channels_; }
  const std::uint8_t* make(const std::byte* row, std::uint32_t y);

 private:
  template <typename Value>
  void convert(const Value* from, std::uint32_t y);

  std::uint32_t width_;
  int inputChannels_;
  int channels_;
  std::uint32_t white_;  ///< the maximum value
  bool isPremultiplied_;
  bool isPlain_;  ///< the rows already have the required form
  bool isDeep_;
  std::vector<std::uint8_t> row_;
};

}  // namespace tavrix
