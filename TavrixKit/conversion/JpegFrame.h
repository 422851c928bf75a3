#pragma once

#include <cstdint>
#include <optional>

#include "device/RangedReader.h"

namespace tavrix {

/// The size of a JPEG picture in pixels.
struct JpegFrame {
  std::uint32_t width = 0;
  std::uint32_t height = 0;

  friend bool operator==(const JpegFrame&, const JpegFrame&) = default;
};

/// Of a file that is whole as far as its segments tell: from its first marker to its frame and scan
/// (ITU-T T.81, B.1), and with the marker of its end as its last. Nothing for any other. Throws
/// what `file` throws.
std::optional<JpegFrame> readJpegFrame(RangedReader& file);

}  // namespace tavrix
