#pragma once

#include "conversion/Conversion.h"
#include "device/RangedReader.h"

namespace tavrix {

/// Whether a still's result is a whole JPEG file of the size that its conversion told, and of that
/// of the source as the source itself tells it, turned or not. Throws what the readers throw.
bool isWholeStill(RangedReader& source, RangedReader& result, const ConversionResult& told);

/// Whether a video's result is a film of the size that its conversion told, which tells the same
/// date, offset and place as its source. Throws what the readers throw.
bool isWholeFilm(RangedReader& source, RangedReader& result, const ConversionResult& told);

}  // namespace tavrix
