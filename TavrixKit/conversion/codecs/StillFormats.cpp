#include <algorithm>
#include <string_view>

#include "conversion/codecs/DecodedStill.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

using namespace std::string_view_literals;

bool isHeif(std::string_view bytes) {
  constexpr std::string_view brands[] = {"heic", "heix", "heim", "heis", "hevc", "hevx",
                                         "mif1", "msf1", "avif", "avis", "miaf"};
  return bytes.size() >= 12 && bytes.substr(4, 4) == "ftyp" &&
         std::find(std::begin(brands), std::end(brands), bytes.substr(8, 4)) != std::end(brands);
}

}  // namespace

/// The content determines the format of a file, not its name.
DecodedStill decodeStill(std::span<char> source, const StillReading& reading) {
  const std::string_view bytes{source.data(), source.size()};
  if (isHeif(bytes)) return decodeHeif(source, reading);
  if (bytes.starts_with("\x89PNG\r\n\x1a\n")) return decodePng(source, reading);
  if (bytes.starts_with("II*\0"sv) || bytes.starts_with("MM\0*"sv))
    return decodeTiff(source, reading);
  if (bytes.starts_with("RIFF") && bytes.size() >= 12 && bytes.substr(8, 4) == "WEBP")
    return decodeWebp(source, reading);
  const bool isOtherRaw = bytes.size() >= 12 && bytes.substr(4, 8) == "ftypcrx ";
  throw ConversionError{isOtherRaw ? ConversionFailure::rawPicture
                                   : ConversionFailure::unsupported};
}

void checkStillSize(std::uint64_t width, std::uint64_t height) {
  if (width == 0 || height == 0) throw ConversionError{ConversionFailure::damagedInput};
  if (width > StillLimits::maxSide || height > StillLimits::maxSide ||
      width * height > StillLimits::maxPixels)
    throw ConversionError{ConversionFailure::tooLarge};
}

}  // namespace tavrix
