#pragma once

#include "conversion/Conversion.h"

namespace tavrix {

/// Re-encodes a still as JPEG. Must run in a process of its own (ConversionProcess), because the
/// decoding libraries cannot be trusted with foreign files.
namespace StillConverter {

/// `quality` is 0 to 1. Throws ConversionError, and FileError if the result cannot be written.
ConversionResult convert(const ConversionFiles& files, double quality,
                         const ConversionProgress& progress);

}  // namespace StillConverter

}  // namespace tavrix
