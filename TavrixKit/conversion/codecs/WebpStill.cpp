#include <webp/decode.h>
#include <webp/demux.h>

#include <cstdlib>

#include "conversion/codecs/DecodedStill.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

using Demuxer = std::unique_ptr<WebPDemuxer, void (*)(WebPDemuxer*)>;

class WebpRows : public PixelRows {
 public:
  WebpRows(const WebPData& data, bool hasAlpha) {
    int decodedWidth = 0;
    int decodedHeight = 0;
    pixels_ = hasAlpha ? WebPDecodeRGBA(data.bytes, data.size, &decodedWidth, &decodedHeight)
                       : WebPDecodeRGB(data.bytes, data.size, &decodedWidth, &decodedHeight);
    if (pixels_ == nullptr) throw ConversionError{ConversionFailure::damagedInput};
    width = static_cast<std::uint32_t>(decodedWidth);
    height = static_cast<std::uint32_t>(decodedHeight);
    channels = hasAlpha ? 4 : 3;
    anyOrder = true;
  }
  ~WebpRows() override { WebPFree(pixels_); }
  WebpRows(const WebpRows&) = delete;
  WebpRows& operator=(const WebpRows&) = delete;

  const std::byte* row(std::uint32_t y) override {
    return reinterpret_cast<const std::byte*>(pixels_) +
           static_cast<std::size_t>(y) * width * static_cast<std::size_t>(channels);
  }

 private:
  std::uint8_t* pixels_ = nullptr;
};

/// Returns the data of the first picture of an animation.
WebPData firstFrame(const Demuxer& demuxer) {
  WebPIterator iterator{};
  if (WebPDemuxGetFrame(demuxer.get(), 1, &iterator) == 0)
    throw ConversionError{ConversionFailure::damagedInput};
  const WebPData data = iterator.fragment;
  WebPDemuxReleaseIterator(&iterator);
  return data;
}

std::string chunk(const Demuxer& demuxer, const char* name) {
  WebPChunkIterator iterator{};
  std::string bytes;
  if (WebPDemuxGetChunk(demuxer.get(), name, 1, &iterator) != 0)
    bytes.assign(reinterpret_cast<const char*>(iterator.chunk.bytes), iterator.chunk.size);
  WebPDemuxReleaseChunkIterator(&iterator);
  return bytes;
}

}  // namespace

DecodedStill decodeWebp(std::span<const char> source, const StillReading& reading) {
  WebPData data{reinterpret_cast<const std::uint8_t*>(source.data()), source.size()};
  const Demuxer demuxer{WebPDemux(&data), WebPDemuxDelete};
  if (demuxer == nullptr) throw ConversionError{ConversionFailure::damagedInput};
  const bool isAnimation = WebPDemuxGetI(demuxer.get(), WEBP_FF_FRAME_COUNT) != 1;
  if (isAnimation && reading.rejectsSeveral)
    throw ConversionError{ConversionFailure::severalPictures};
  DecodedStill still;
  still.width = WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_WIDTH);
  still.height = WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_HEIGHT);
  checkStillSize(still.width, still.height);
  const std::uint32_t flags = WebPDemuxGetI(demuxer.get(), WEBP_FF_FORMAT_FLAGS);
  still.metadata.exif = chunk(demuxer, "EXIF");
  if (still.metadata.exif.starts_with("Exif")) still.metadata.exif.erase(0, 6);
  still.metadata.xmp = chunk(demuxer, "XMP ");
  still.metadata.icc = chunk(demuxer, "ICCP");
  still.orientation = orientationOf(still.metadata.exif);
  if (isAnimation) data = firstFrame(demuxer);
  WebPBitstreamFeatures features{};
  if (WebPGetFeatures(data.bytes, data.size, &features) != VP8_STATUS_OK)
    throw ConversionError{ConversionFailure::damagedInput};
  if (isAnimation) {
    // The picture may cover only a part of the canvas.
    still.width = static_cast<std::uint32_t>(features.width);
    still.height = static_cast<std::uint32_t>(features.height);
    checkStillSize(still.width, still.height);
  }
  still.rows =
      std::make_unique<WebpRows>(data, (flags & ALPHA_FLAG) != 0 || features.has_alpha != 0);
  return still;
}

}  // namespace tavrix
