#pragma once

#include "conversion/Conversion.h"

namespace tavrix {

/// Converts a video to an MP4 file of H.264 and AAC. Must run in a process of its own
/// (ConversionProcess), like stills.
///
/// Pictures in H.264 and sounds in AAC are copied unchanged; all others are encoded. Times,
/// rotation and the capture metadata of the header are kept. A high dynamic range becomes the
/// standard one. If there are several picture tracks, the main one is kept; of the sounds, all that
/// can be decoded are kept. Timed metadata and anything that no H.264 player shows are left out.
namespace VideoConverter {

/// The result must be open for reading, too, because it is checked at the end. Throws
/// ConversionError, and FileError if the result cannot be written.
ConversionResult convert(const ConversionFiles& files, const ConversionProgress& progress);

}  // namespace VideoConverter

}  // namespace tavrix
