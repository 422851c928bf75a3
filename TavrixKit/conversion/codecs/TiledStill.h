#pragma once

#include <optional>

#include "conversion/HeifTiles.h"
#include "conversion/codecs/DecodedStill.h"

namespace tavrix {

/// Decodes a picture of tiles into upright planes. Nothing when its colours are not those of JPEG:
/// `isTold` says that the file itself tells that they are, whatever the tiles say. Throws
/// ConversionError.
std::optional<YcbcrPlanes> decodeTiles(const HeifTiles& picture, bool isTold);

}  // namespace tavrix
