#pragma once

#include <cstdint>
#include <span>

#include "conversion/codecs/DecodedStill.h"
#include "conversion/codecs/FilmSource.h"

namespace tavrix {

/// Returns true if the bytes begin like a QuickTime or MP4 file.
bool isIsoFilm(std::span<const char> source);
/// Decodes a film's first picture, reduced to `longestSide`, in square pixels. A high dynamic range
/// becomes the standard one. The orientation is that of the film's matrix. Throws ConversionError.
DecodedStill decodeFirstPicture(std::span<const char> source, std::uint32_t longestSide);

/// Returns true if the bytes begin like a GIF or BMP file.
bool isGifOrBmp(std::span<const char> source);
/// Decodes a BMP file or the first picture of a GIF file. Throws ConversionError.
DecodedStill decodeGifOrBmp(std::span<const char> source);

/// Returns the Exif orientation, 1 to 8, that is nearest to the transformation.
int orientationOf(const DisplayMatrix& matrix);

}  // namespace tavrix
