#pragma once

#include <memory>

#include "conversion/codecs/DecodedStill.h"

namespace tavrix {

/// The rows turned upright by an orientation of Exif, 1 to 8; rows that come in order only are kept
/// in memory for that.
std::unique_ptr<PixelRows> uprightRows(std::unique_ptr<PixelRows> rows, int orientation);

/// One row as JPEG takes it: 8 bits, 1 or 3 values for a pixel, transparency laid on white. More
/// bits are brought down by ordered dithering, so that a smooth sky stays smooth.
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
  std::uint32_t white_;  ///< the greatest value
  bool isPremultiplied_;
  bool isPlain_;  ///< the rows are already what is wanted
  bool isDeep_;
  std::vector<std::uint8_t> row_;
};

}  // namespace tavrix
