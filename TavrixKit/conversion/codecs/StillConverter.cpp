#include "conversion/codecs/StillConverter.h"

#include <algorithm>
#include <string_view>

#include "conversion/JpegFrame.h"
#include "conversion/codecs/ColourProfile.h"
#include "conversion/codecs/DecodedStill.h"
#include "conversion/codecs/JpegEncoder.h"
#include "conversion/codecs/UprightRows.h"
#include "conversion/codecs/platform/ConversionFile.h"
#include "device/metadata/MemoryReader.h"

namespace tavrix {
namespace {

/// A JPEG file under another name already has the requested format and is copied.
ConversionResult copyJpeg(std::span<const char> source, ByteSink& sink) {
  MemoryReader reader{source};
  const auto frame = readJpegFrame(reader);
  if (!frame) throw ConversionError{ConversionFailure::damagedInput};
  sink.write(std::as_bytes(source));
  return {frame->width, frame->height, 0, false};
}

void writeRows(DecodedStill& still, int quality, ByteSink& sink,
               const ConversionProgress& progress) {
  // From this quality on, halved chroma would hide detail that the quality preserves.
  constexpr int fullChromaQuality = 90;
  const auto rows = uprightRows(std::move(still.rows), still.orientation);
  JpegRow row{*rows};
  if (!still.metadata.icc.empty() && !fitsChannels(still.metadata.icc, row.channels()))
    throw ConversionError{ConversionFailure::unsupportedColour};
  JpegEncoder encoder{sink};
  encoder.begin({rows->width, rows->height, row.channels(), quality,
                 still.isSubsampled || quality < fullChromaQuality},
                still.metadata);
  for (std::uint32_t y = 0; y < rows->height; ++y) {
    encoder.write(row.make(rows->row(y), y));
    if (y % 64 == 0) progress(0.5 + 0.5 * y / rows->height);
  }
  encoder.finish();
}

}  // namespace

ConversionResult StillConverter::convert(const ConversionFiles& files, double quality,
                                         const ConversionProgress& progress) {
  const SourceMapping source{files.source, StillLimits::maxBytes};
  DescriptorSink sink{files.result};
  const std::string_view bytes{source.bytes().data(), source.bytes().size()};
  if (bytes.starts_with("\xFF\xD8\xFF")) return copyJpeg(source.bytes(), sink);

  DecodedStill still = decodeStill(source.bytes(), {});
  progress(0.5);
  still.metadata.exif = withUprightExif(std::move(still.metadata.exif));
  still.metadata.xmp = withUprightXmp(std::move(still.metadata.xmp));
  ConversionResult result{still.width, still.height, 0, still.isCropped};
  if (still.orientation >= 5) std::swap(result.width, result.height);
  if (still.planes) {
    const auto& luma = still.planes->planes[0];
    if (luma.width != still.width || luma.height != still.height)
      throw ConversionError{ConversionFailure::wrongResult};
    if (!still.metadata.icc.empty() && !fitsChannels(still.metadata.icc, 3))
      throw ConversionError{ConversionFailure::unsupportedColour};
    JpegEncoder{sink}.writePlanes(*still.planes, jpegQualityOf(quality), still.metadata,
                                  [&](double part) { progress(0.5 + part / 2); });
  } else {
    if (still.rows->width != still.width || still.rows->height != still.height)
      throw ConversionError{ConversionFailure::wrongResult};
    writeRows(still, jpegQualityOf(quality), sink, progress);
  }
  return result;
}

}  // namespace tavrix
