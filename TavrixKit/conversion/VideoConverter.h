#pragma once

#include "conversion/Conversion.h"

namespace tavrix {

/// Re-encodes a video as H.264. Runs in a process of its own (ConversionProcess), as stills do.
namespace VideoConverter {

/// Throws ConversionError, and FileError for what cannot be written.
ConversionResult convert(const ConversionFiles& files, const ConversionProgress& progress);

}  // namespace VideoConverter

}  // namespace tavrix
