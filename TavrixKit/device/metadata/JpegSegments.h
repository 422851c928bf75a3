#pragma once

#include <cstdint>
#include <optional>

#include "device/metadata/FileBytes.h"
#include "device/metadata/PixelSize.h"
#include "device/metadata/TiffBlock.h"

namespace tavrix {

/// Iterates over the marker segments of a JPEG file (ITU-T T.81, B.1) up to its picture.
class JpegSegments {
 public:
  struct Segment {
    unsigned marker = 0;
    std::uint64_t begin = 0;  ///< offset of its content
    std::uint64_t length = 0;

    /// Returns true for a start of frame in any coding.
    bool isFrame() const;
  };

  explicit JpegSegments(FileBytes& file) : file_(file) {}

  /// Returns the next segment. Returns nullopt at the scan, at the end of the image, at a broken
  /// segment, and after more segments than any real file has.
  std::optional<Segment> next();

  /// Returns the size in a frame's segment; 0 × 0 if the file ends before it.
  static PixelSize sizeOf(FileBytes& file, const Segment& frame);
  /// Returns the Exif block in a segment, or nullopt if the segment has none.
  static std::optional<TiffBlock> exifOf(FileBytes& file, const Segment& segment);

 private:
  static constexpr int maxSegments = 1024;

  FileBytes& file_;
  std::uint64_t offset_ = 2;
  int count_ = 0;
};

}  // namespace tavrix
