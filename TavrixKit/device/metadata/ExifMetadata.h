#pragma once

#include "device/metadata/MediaMetadata.h"
#include "device/metadata/TiffBlock.h"

namespace tavrix {

/// Reads date, offset, position, content identifier and the camera flag `cam` from an Exif block
/// (Exif 2.32) into `metadata`. Malformed fields are left out. The pixel size is left to the
/// container's reader: an Exif block keeps the size that the picture had before it was cropped.
void readExif(const TiffBlock& block, MediaMetadata& metadata);

}  // namespace tavrix
