#pragma once

#include "device/metadata/MediaMetadata.h"
#include "device/metadata/RangedReader.h"

namespace tavrix {

/// Reads the capture metadata of pictures and films. The content of a file decides its format, not
/// its name. Only a few small ranges are read, never the whole file.
namespace MetadataReader {

/// Returns the metadata of a file; empty metadata if the format is unknown. Broken parts are left
/// out. Throws only what `file` throws.
MediaMetadata read(RangedReader& file);

}  // namespace MetadataReader

}  // namespace tavrix
