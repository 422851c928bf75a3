#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// The metadata of a still, each block as stored in the file; empty if absent.
struct StillMetadata {
  std::string exif;  ///< a TIFF structure, without any prefix
  std::string xmp;   ///< a packet of UTF-8
  std::string icc;   ///< a colour profile

  friend bool operator==(const StillMetadata&, const StillMetadata&) = default;
};

/// Returns the orientation in an Exif block, 1 to 8 (Exif 2.32, 4.6.4); 1 if it has none.
int orientationOf(std::string_view exif);

/// Returns the block with orientation 1. All other bytes stay the same, including the orientation
/// of a thumbnail. A block without an orientation, or one that is not a TIFF structure, stays
/// unchanged.
std::string withUprightExif(std::string exif);

/// Returns the packet with every "tiff:Orientation" set to 1.
std::string withUprightXmp(std::string xmp);

/// A segment of a JPEG file (ITU-T T.81, B.1.1.4): its marker's number, 0xE1 for APP1, and the
/// bytes after the length.
struct JpegSegment {
  int marker = 0;
  std::string payload;

  friend bool operator==(const JpegSegment&, const JpegSegment&) = default;
};

/// Returns the metadata as segments in file order: the Exif block in one segment, the XMP packet in
/// one segment or, if it does not fit, as extended XMP (ISO 16684-1 in JPEG files), and the profile
/// in as many as it needs (ICC.1, B.4). Throws ConversionError with `metadataTooLarge` if the
/// metadata do not fit.
std::vector<JpegSegment> segmentsOf(const StillMetadata& metadata);

}  // namespace tavrix
