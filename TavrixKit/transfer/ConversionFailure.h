#pragma once

#include <cstdint>
#include <string_view>

namespace tavrix {

/// The reason why a file was not converted and is kept as it is.
enum class ConversionFailure : std::uint8_t {
  unsupported,        ///< a format that no converter here handles
  rawPicture,         ///< a camera's raw data, such as DNG
  severalPictures,    ///< an animation or several pages, of which only one picture would remain
  unsupportedColour,  ///< colours that would not survive, such as CMYK or high dynamic range
  tooLarge,           ///< more pixels or bytes than the limits allow
  metadataTooLarge,   ///< Exif, XMP or a colour profile that no JPEG file can hold
  damagedInput,       ///< not the format that it claims to be, or truncated
  wrongResult,        ///< the result was empty, truncated, or of another size or duration
  crashed,            ///< the decoder crashed
  tooSlow,            ///< the decoder exceeded its time limit
  tooMuchMemory,      ///< the decoder exceeded its memory limit
  failed,             ///< not caused by the file; another attempt may succeed
};

/// Returns the name of the enumerator.
std::string_view textOf(ConversionFailure failure);

/// Returns true if another attempt at the same file would fail in the same way.
constexpr bool isLasting(ConversionFailure failure) { return failure != ConversionFailure::failed; }

}  // namespace tavrix
