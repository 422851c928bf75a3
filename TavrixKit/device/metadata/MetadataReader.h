#pragma once

#include "device/MediaMetadata.h"
#include "device/RangedReader.h"

namespace tavrix {

/// Reads what a picture or film tells of its capture. The content decides what a file is, not its
/// name; a few small ranges are read, never the whole file.
namespace MetadataReader {

/// Nothing in it for a file of no known kind; what is broken in a file is left out. Throws only
/// what `file` throws.
MediaMetadata read(RangedReader& file);

}  // namespace MetadataReader

}  // namespace tavrix
