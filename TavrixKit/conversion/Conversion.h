#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "transfer/MediaConverter.h"

namespace tavrix {

/// The result that a finished conversion reports; the parent checks the file against it.
struct ConversionResult {
  std::uint32_t width = 0;         ///< pixels of the result, upright; for a film converted to
                                   ///< square pixels
  std::uint32_t height = 0;        ///< as `width`
  std::uint64_t milliseconds = 0;  ///< duration of a video; 0 for a still
  /// True if the file itself declares that its picture is only a part of what is stored.
  bool isCropped = false;

  friend bool operator==(const ConversionResult&, const ConversionResult&) = default;
};

/// The two files of a conversion as open descriptors: the source for reading, the empty result for
/// writing and seeking. The caller that opened them closes them.
struct ConversionFiles {
  int source = -1;
  int result = -1;
};

}  // namespace tavrix
