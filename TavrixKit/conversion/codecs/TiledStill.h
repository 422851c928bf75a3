#pragma once

#include <optional>

#include "conversion/codecs/DecodedStill.h"
#include "conversion/codecs/HeifTiles.h"

namespace tavrix {

/// Decodes a picture of tiles into upright planes. Returns nullopt if its colours are not those of
/// JPEG. `isTold` means that the file itself declares them to be, which applies to tiles that do
/// not specify their range. Throws ConversionError.
std::optional<YcbcrPlanes> decodeTiles(const HeifTiles& picture, bool isTold);

}  // namespace tavrix
