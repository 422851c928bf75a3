#include "transfer/ConversionFailure.h"

#include <array>

namespace tavrix {

std::string_view textOf(ConversionFailure failure) {
  constexpr std::array<std::string_view, 12> texts{
      "unsupported", "rawPicture",       "severalPictures", "unsupportedColour",
      "tooLarge",    "metadataTooLarge", "damagedInput",    "wrongResult",
      "crashed",     "tooSlow",          "tooMuchMemory",   "failed"};
  return texts.at(static_cast<std::size_t>(failure));
}

}  // namespace tavrix
