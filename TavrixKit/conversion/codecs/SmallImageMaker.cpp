#include "conversion/codecs/SmallImageMaker.h"

#include <string_view>

#include "conversion/codecs/ColourProfile.h"
#include "conversion/codecs/FilmStill.h"
#include "conversion/codecs/JpegEncoder.h"
#include "conversion/codecs/SmallPixels.h"
#include "conversion/codecs/UprightRows.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

constexpr int smallImageQuality = 85;

DecodedStill decodeAny(PictureRequest& request) {
  const std::span<char> source{request.bytes};
  if (request.bytes.starts_with("\xFF\xD8\xFF")) return decodeJpeg(source, request.longestSide);
  if (isGifOrBmp(source)) return decodeGifOrBmp(source);
  try {
    return decodeStill(source, {.rejectsSeveral = false, .turnsHeif = request.orientation == 0});
  } catch (const ConversionError& error) {
    const bool mayBeFilm = error.failure() == ConversionFailure::unsupported && isIsoFilm(source);
    if (!mayBeFilm) throw;
  }
  return decodeFirstPicture(source, request.longestSide);
}

SmallPixels convertedToSrgb(SmallPixels pixels, const std::string& icc) {
  // A picture with a damaged profile is shown as if it had none.
  auto values = inSrgb(pixels.values, pixels.channels, icc);
  if (!values) return pixels;
  return {pixels.width, pixels.height, 3, std::move(*values)};
}

SmallImage encoded(PixelRows& rows) {
  StringSink sink;
  JpegEncoder encoder{sink};
  encoder.begin({rows.width, rows.height, rows.channels, smallImageQuality, true}, {});
  for (std::uint32_t y = 0; y < rows.height; ++y)
    encoder.write(reinterpret_cast<const std::uint8_t*>(rows.row(y)));
  encoder.finish();
  return {rows.width, rows.height, sink.take()};
}

}  // namespace

SmallImage makeSmallImage(PictureRequest& request) {
  DecodedStill still = decodeAny(request);
  SmallPixels pixels = shrunk(still, request.longestSide);
  // The shape of the full picture is that of its stored pixels.
  if (!still.isTurned)
    pixels = withoutBars(std::move(pixels), {request.fullWidth, request.fullHeight});
  pixels = convertedToSrgb(std::move(pixels), still.metadata.icc);
  const bool isTold = request.orientation >= 1 && request.orientation <= 8;
  const auto rows =
      uprightRows(rowsOf(std::move(pixels)), isTold ? request.orientation : still.orientation);
  return encoded(*rows);
}

}  // namespace tavrix
