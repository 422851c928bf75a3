#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace tavrix {

/// A width and a height in pixels.
struct PixelSize {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

/// Resizes rows of 8-bit values: each value of the result is the mean of the area that it covers.
/// This keeps fine patterns from becoming coarse ones.
class AreaAverage {
 public:
  /// Each side has 1 to 65,500 pixels, so that no sum overflows.
  AreaAverage(PixelSize from, PixelSize to, int channels);

  /// Adds the next row from the top, `from.width * channels` values.
  void add(const std::uint8_t* row);
  /// Returns all rows of the result after the last row was added.
  std::vector<std::uint8_t> take() { return std::move(result_); }

 private:
  void accumulate(const std::uint8_t* row, std::uint32_t weight);
  void finishRow();

  PixelSize from_;
  PixelSize to_;
  std::uint32_t channels_;
  std::uint64_t top_ = 0;     ///< of the next source row, in units of 1/to.height
  std::uint64_t target_ = 0;  ///< the row of the result that is being summed up
  std::vector<std::uint32_t> sums_;
  std::vector<std::uint8_t> result_;
};

}  // namespace tavrix
