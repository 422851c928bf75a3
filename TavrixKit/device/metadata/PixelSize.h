#pragma once

#include <algorithm>
#include <cstdint>

namespace tavrix {

/// The size of a picture in pixels as stored, before any rotation; 0 × 0 if it is unknown.
struct PixelSize {
  std::uint64_t width = 0;
  std::uint64_t height = 0;

  std::uint64_t longerSide() const { return std::max(width, height); }
  friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

}  // namespace tavrix
