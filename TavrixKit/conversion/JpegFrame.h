#pragma once

#include <cstdint>
#include <optional>

#include "device/metadata/RangedReader.h"

namespace tavrix {

/// The size of a JPEG picture in pixels.
struct JpegFrame {
  std::uint32_t width = 0;
  std::uint32_t height = 0;

  friend bool operator==(const JpegFrame&, const JpegFrame&) = default;
};

/// Returns the frame of a JPEG file that is complete as far as its segments show: well-formed from
/// its first marker to its frame and scan (ITU-T T.81, B.1), with the end marker as its last two
/// bytes. Returns nullopt for any other file. Throws what `file` throws.
std::optional<JpegFrame> readJpegFrame(RangedReader& file);

}  // namespace tavrix
