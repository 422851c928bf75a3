#pragma once

#include "conversion/Conversion.h"

namespace tavrix {

/// Re-saves a still as JPEG. Runs in a process of its own (ConversionProcess), for the libraries
/// that decode are not to be trusted with files from outside.
namespace StillConverter {

/// `quality` is 0 to 1. Throws ConversionError, and FileError for what cannot be written.
ConversionResult convert(const ConversionFiles& files, double quality,
                         const ConversionProgress& progress);

}  // namespace StillConverter

}  // namespace tavrix
