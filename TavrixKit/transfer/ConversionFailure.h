#pragma once

#include <cstdint>
#include <string_view>

namespace tavrix {

/// Why a file was not converted and is kept as it is.
enum class ConversionFailure : std::uint8_t {
  unsupported,        ///< of a kind that nothing here converts
  rawPicture,         ///< a camera's raw data, such as DNG
  severalPictures,    ///< an animation or several pages, of which one picture would be left
  unsupportedColour,  ///< colours that would not survive, such as CMYK or high dynamic range
  tooLarge,           ///< more pixels, bytes or metadata than is taken on
  damagedInput,       ///< not what it claims to be, or cut short
  wrongResult,        ///< the result was empty, cut short, or of another size or duration
  crashed,            ///< the decoder broke down over it
  tooSlow,            ///< the decoder used up its time
  tooMuchMemory,      ///< the decoder used up its memory
  failed,             ///< nothing that the file is to blame for; it may work the next time
};

/// The case names.
std::string_view textOf(ConversionFailure failure);

/// Whether another attempt at the same file would end the same way.
constexpr bool isLasting(ConversionFailure failure) { return failure != ConversionFailure::failed; }

}  // namespace tavrix
