#pragma once

#include "device/MediaMetadata.h"
#include "device/TiffBlock.h"

namespace tavrix {

/// Takes date, offset, position and the camera's mark from an Exif block (Exif 2.32); what is
/// malformed is left out. The pixel size is the container's to tell: an Exif block goes on naming
/// the size that a picture had before it was cut.
void readExif(const TiffBlock& block, MediaMetadata& metadata);

}  // namespace tavrix
