#pragma once

#include "conversion/Conversion.h"
#include "device/metadata/RangedReader.h"

namespace tavrix {

/// Returns true if the result is a complete JPEG file of the size that the conversion reported in
/// `told` and that the source itself declares, turned or not. Throws what the readers throw.
bool isWholeStill(RangedReader& source, RangedReader& result, const ConversionResult& told);

/// Returns true if the result is a film of the size that the conversion reported in `told`, with
/// the same date, offset and place as its source. Throws what the readers throw.
bool isWholeFilm(RangedReader& source, RangedReader& result, const ConversionResult& told);

}  // namespace tavrix
