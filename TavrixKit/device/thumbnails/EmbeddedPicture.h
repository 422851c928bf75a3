#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "conversion/SmallImage.h"
#include "device/metadata/RangedReader.h"

namespace tavrix {

/// The cheapest part of a file that shows its picture.
struct EmbeddedPicture {
  enum class Origin {
    exifThumbnail,  ///< the thumbnail in the Exif block
    preview,        ///< another JPEG file inside a JPEG, TIFF or raw file
    thumbnailItem,  ///< the thumbnail item of a HEIF file
    keyFrame,       ///< the first key frame of a film
    whole,          ///< the whole file
  };

  Origin origin = Origin::whole;
  PictureRequest request;   ///< without longestSide
  std::uint32_t width = 0;  ///< pixels of `request.bytes`, before any rotation; 0 if unknown
  std::uint32_t height = 0;
  /// The playing time of a film; nullopt for a picture, and if the file does not say it.
  std::optional<std::chrono::milliseconds> filmLength{};
};

/// Finds pictures inside a file without decoding any. Only containers are parsed, within limits;
/// the pixels are left to PictureDecoder. A thumbnail item and a key frame become a small file of
/// their own, made of the original's bytes and what a decoder needs to show them upright.
namespace EmbeddedPictures {

struct Wanted {
  std::uint32_t leastSide = 160;  ///< of the longer side, in pixels
  bool mayReadWhole = true;       ///< false while the file is too expensive to read
  std::uint64_t maxWholeBytes = std::uint64_t{32} << 20U;
  /// If true, the whole file, where it may be read, is preferred to an embedded picture that is
  /// smaller than `leastSide`.
  bool prefersWholeToSmaller = false;
};

/// Returns the cheapest embedded picture whose longer side has at least `leastSide` pixels, else
/// the largest smaller one, else, if `mayReadWhole` and the file has at most `maxWholeBytes`, the
/// whole file. Returns nullopt if there is none. The content of the file decides its format. A
/// picture with a thumbnail takes at most 3 ranges and usually less than 128 KiB. Throws only what
/// `file` throws.
std::optional<EmbeddedPicture> find(RangedReader& file, const Wanted& wanted);

}  // namespace EmbeddedPictures

}  // namespace tavrix
