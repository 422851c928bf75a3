#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "device/metadata/FileBytes.h"
#include "device/metadata/PixelSize.h"
#include "device/metadata/TiffBlock.h"
#include "device/thumbnails/EmbeddedPicture.h"

namespace tavrix {

/// A part of a file that may show its picture and has not been read yet. Offset and length are
/// unchecked.
struct PicturePart {
  EmbeddedPicture::Origin origin = EmbeddedPicture::Origin::preview;
  std::uint64_t begin = 0;
  std::uint64_t length = 0;
  std::string head;  ///< goes before the part's bytes to make a file; empty if they are a JPEG file
  PixelSize size;    ///< 0 × 0 if only the bytes say it
  std::uint64_t likelySide = 0;  ///< the longer side if `size` is unknown; 0 if that is, too

  bool isJpeg() const { return head.empty(); }
  std::uint64_t side() const { return size.width > 0 ? size.longerSide() : likelySide; }
};

/// The parts of a file and the properties of its full picture.
struct PictureParts {
  std::vector<PicturePart> parts;
  PixelSize full;       ///< 0 × 0 if unknown
  int orientation = 1;  ///< Exif orientation of the full picture and of parts that are JPEG files
  bool isDecodable = true;  ///< false if the whole file needs a raw developer
  std::optional<std::chrono::milliseconds> filmLength{};  ///< of a film, if its header has it
};

/// One function per format. They throw only what the file's RangedReader throws.
PictureParts jpegParts(FileBytes& file);
PictureParts tiffParts(FileBytes& file);
PictureParts heifParts(FileBytes& file);
PictureParts movieParts(FileBytes& file);

/// Fetches what follows the first media of a film, or of a file of boxes that may be one, in one
/// range: that is where most cameras put the header.
void fetchAfterMedia(FileBytes& file);

/// Returns the JPEG files that the directories of a TIFF structure locate, as parts of the file.
std::vector<PicturePart> jpegsIn(const TiffBlock& block, EmbeddedPicture::Origin origin);
/// Returns the Exif orientation in the first directory; 1 if it is absent or malformed.
int orientationIn(const TiffBlock& block);

/// Returns the file that a part makes. Returns nullopt if the file does not have them all, if
/// they are more than any part of that origin has, or if a JPEG file is expected and they do not
/// begin like one. Sets the size of a JPEG file.
std::optional<std::string> fileOfPart(RangedReader& file, const FileBytes& fetched,
                                      PicturePart& part);

/// Returns true if one picture is wide and the other is tall, so that they cannot show the same.
bool haveOtherShapes(PixelSize one, PixelSize other);

}  // namespace tavrix
