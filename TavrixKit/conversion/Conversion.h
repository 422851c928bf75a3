#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "transfer/MediaConverter.h"

namespace tavrix {

/// What a finished conversion says of its result; the parent checks the result against it.
struct ConversionResult {
  std::uint32_t width = 0;         ///< pixels of the result, upright, those of a film made square
  std::uint32_t height = 0;        ///< the same
  std::uint64_t milliseconds = 0;  ///< duration of a video; 0 of a still
  /// The file itself says that its picture is only a part of what is stored.
  bool isCropped = false;

  friend bool operator==(const ConversionResult&, const ConversionResult&) = default;
};

/// The two files of a conversion as descriptors that are open: the source for reading, the result
/// empty, for writing and seeking. Whoever opened them closes them.
struct ConversionFiles {
  int source = -1;
  int result = -1;
};

}  // namespace tavrix
