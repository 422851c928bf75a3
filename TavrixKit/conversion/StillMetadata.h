#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// What goes with the pixels of a still, each as the file holds it; empty for none.
struct StillMetadata {
  std::string exif;  ///< a TIFF structure, without any mark before it
  std::string xmp;   ///< a packet of UTF-8
  std::string icc;   ///< a colour profile

  friend bool operator==(const StillMetadata&, const StillMetadata&) = default;
};

/// The orientation that an Exif block tells, 1 to 8 (Exif 2.32, 4.6.4); 1 when it tells none.
int orientationOf(std::string_view exif);

/// The block with orientation 1; all else stays byte for byte, that of a thumbnail included. A
/// block without one, or one that is no TIFF structure, stays as it is.
std::string withUprightExif(std::string exif);

/// The packet with "tiff:Orientation" 1 wherever it tells one.
std::string withUprightXmp(std::string xmp);

/// A segment of a JPEG file (ITU-T T.81, B.1.1.4): its marker's number, 0xE1 for APP1, and what
/// follows the length.
struct JpegSegment {
  int marker = 0;
  std::string payload;

  friend bool operator==(const JpegSegment&, const JpegSegment&) = default;
};

/// The metadata as segments in the order in which they stand in a file: the Exif block in one, the
/// packet in one or, when that is too short, as extended XMP (ISO 16684-1 in JPEG files),
/// the profile in as many as it takes (ICC.1, B.4). Throws ConversionError with `tooLarge` for what
/// does not fit.
std::vector<JpegSegment> segmentsOf(const StillMetadata& metadata);

}  // namespace tavrix
