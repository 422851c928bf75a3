#pragma once

#include <cstdint>
#include <string>

namespace tavrix {

/// A picture to decode: a small file that is complete in itself, and how to show it.
struct PictureRequest {
  std::string bytes;    ///< a JPEG, HEIF, PNG, TIFF, WebP, GIF, BMP or MP4/MOV file
  int orientation = 0;  ///< Exif orientation to apply, 1 to 8; 0 if the bytes themselves say it
  std::uint32_t fullWidth =
      0;  ///< pixels of the full picture as stored, before the orientation; 0 if
  std::uint32_t fullHeight = 0;     ///< unknown. Black bars beyond its shape are cut off
  std::uint32_t longestSide = 320;  ///< of the result, in pixels; a smaller picture is not enlarged
};

/// An upright picture in sRGB, as a JPEG file that this program encoded.
struct SmallImage {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::string jpeg;
};

}  // namespace tavrix
