#pragma once

#include "conversion/Conversion.h"

namespace tavrix {

/// Makes an MP4 file of H.264 and AAC of a video. Runs in a process of its own (ConversionProcess),
/// as stills do.
///
/// Pictures that are H.264 already are carried over as they are, and so are sounds in AAC; else
/// they are encoded. Times, rotation, and what the header tells of the capture stay. A high dynamic
/// range becomes the standard one. Of several picture tracks the main one is kept, of sounds all
/// that can be decoded; timed metadata and what no player of H.264 shows is left out.
namespace VideoConverter {

/// The result is open for reading too, for it is looked at in the end. Throws ConversionError, and
/// FileError for what cannot be written.
ConversionResult convert(const ConversionFiles& files, const ConversionProgress& progress);

}  // namespace VideoConverter

}  // namespace tavrix
