#include "conversion/codecs/AreaAverage.h"

#include <algorithm>
#include <array>

namespace tavrix {

// A side of m pixels that becomes one of n pixels is measured in units of which a source pixel has
// n and a pixel of the result has m. All weights are then whole numbers.

AreaAverage::AreaAverage(PixelSize from, PixelSize to, int channels)
    : from_(from),
      to_(to),
      channels_(static_cast<std::uint32_t>(channels)),
      sums_(std::size_t{from.width} * channels_) {
  result_.reserve(std::size_t{to.width} * to.height * channels_);
}

void AreaAverage::add(const std::uint8_t* row) {
  if (from_ == to_) {
    result_.insert(result_.end(), row, row + sums_.size());
    return;
  }
  const std::uint64_t bottom = top_ + to_.height;
  while (top_ < bottom) {
    const std::uint64_t end = (target_ + 1) * from_.height;
    const std::uint64_t next = std::min(bottom, end);
    accumulate(row, static_cast<std::uint32_t>(next - top_));
    top_ = next;
    if (top_ == end) finishRow();
  }
}

void AreaAverage::accumulate(const std::uint8_t* row, std::uint32_t weight) {
  std::uint32_t* const sums = sums_.data();
  const std::size_t count = sums_.size();
  for (std::size_t i = 0; i < count; ++i) sums[i] += weight * row[i];
}

void AreaAverage::finishRow() {
  const double share = 1 / (static_cast<double>(from_.width) * from_.height);
  std::array<std::uint64_t, 4> totals{};
  std::uint64_t left = 0;
  std::uint64_t end = from_.width;
  const std::uint32_t* sums = sums_.data();
  for (std::uint32_t x = 0; x < from_.width; ++x, sums += channels_) {
    const std::uint64_t right = left + to_.width;
    while (left < right) {
      const std::uint64_t next = std::min(right, end);
      for (std::size_t c = 0; c < channels_; ++c) totals[c] += (next - left) * sums[c];
      left = next;
      if (left < end) continue;
      for (std::size_t c = 0; c < channels_; ++c)
        result_.push_back(static_cast<std::uint8_t>(static_cast<double>(totals[c]) * share + 0.5));
      totals = {};
      end += from_.width;
    }
  }
  std::fill(sums_.begin(), sums_.end(), 0);
  ++target_;
}

}  // namespace tavrix
