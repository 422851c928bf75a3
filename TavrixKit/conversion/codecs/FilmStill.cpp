#include "conversion/codecs/FilmStill.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "conversion/codecs/ColourProfile.h"
#include "conversion/codecs/PictureFilter.h"
#include "conversion/codecs/SmallPixels.h"
#include "transfer/MediaConverter.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace tavrix {
namespace {

/// Rows of a frame in RGB, with or without opacity.
class FrameRows : public PixelRows {
 public:
  explicit FrameRows(av::Frame frame) : frame_(std::move(frame)) {
    width = static_cast<std::uint32_t>(frame_->width);
    height = static_cast<std::uint32_t>(frame_->height);
    channels = frame_->format == AV_PIX_FMT_RGBA ? 4 : 3;
    anyOrder = true;
  }
  const std::byte* row(std::uint32_t y) override {
    return reinterpret_cast<const std::byte*>(frame_->data[0] +
                                              std::ptrdiff_t{frame_->linesize[0]} * y);
  }

 private:
  av::Frame frame_;
};

struct FreeParameters {
  void operator()(AVCodecParameters* p) const { avcodec_parameters_free(&p); }
};
using Parameters = std::unique_ptr<AVCodecParameters, FreeParameters>;

Parameters parametersOf(const AVFrame& frame) {
  Parameters parameters{avcodec_parameters_alloc()};
  if (!parameters) throw std::bad_alloc{};
  parameters->codec_type = AVMEDIA_TYPE_VIDEO;
  parameters->width = frame.width;
  parameters->height = frame.height;
  parameters->format = frame.format;
  parameters->color_range = frame.color_range;
  parameters->color_primaries = frame.color_primaries;
  parameters->color_trc = frame.color_trc;
  parameters->color_space = frame.colorspace;
  return parameters;
}

DecodedStill filtered(av::Frame frame, const std::string& filters) {
  PictureFilter filter{*parametersOf(*frame), {1, 1}, filters};
  filter.push(frame.get());
  filter.push(nullptr);
  DecodedStill still;
  if (!filter.pull(*frame)) throw ConversionError{ConversionFailure::damagedInput};
  still.rows = std::make_unique<FrameRows>(std::move(frame));
  still.width = still.rows->width;
  still.height = still.rows->height;
  return still;
}

/// Decodes packets until the first picture is complete. A packet of a phone's film has a whole
/// picture, so the decoder need not wait for the ones after it.
av::Frame firstPicture(FilmSource& film) {
  const av::Codec decoder = av::openDecoder(film.picture(), 1);
  const av::Packet packet = av::makePacket();
  const av::Frame received = av::makeFrame();
  av::Frame first;
  const auto take = [&] {
    if (first) return;
    first = av::makeFrame();
    av_frame_move_ref(first.get(), received.get());
  };
  while (film.next(*packet)) {
    if (packet->stream_index == film.picture().index) break;
    av_packet_unref(packet.get());
  }
  // An edit may begin after the first picture.
  packet->flags &= ~AV_PKT_FLAG_DISCARD;
  av::decode(*decoder, packet.get(), *received, take);
  if (!first) av::decode(*decoder, nullptr, *received, take);
  if (!first) throw ConversionError{ConversionFailure::damagedInput};
  return first;
}

/// Completes the colours of a picture by those of its stream.
void completeColours(AVFrame& frame, const AVCodecParameters& stream) {
  if (frame.color_range == AVCOL_RANGE_UNSPECIFIED) frame.color_range = stream.color_range;
  if (frame.color_primaries == AVCOL_PRI_UNSPECIFIED)
    frame.color_primaries = stream.color_primaries;
  if (frame.color_trc == AVCOL_TRC_UNSPECIFIED) frame.color_trc = stream.color_trc;
  if (frame.colorspace == AVCOL_SPC_UNSPECIFIED) frame.colorspace = stream.color_space;
  if (!isHighDynamicRange(*parametersOf(frame))) return;
  // Implied by the transfer function (ITU-R BT.2100), but not always written.
  frame.color_primaries = AVCOL_PRI_BT2020;
  frame.colorspace = AVCOL_SPC_BT2020_NCL;
}

const char* matrixNameOf(const AVFrame& frame) {
  switch (frame.colorspace) {
    case AVCOL_SPC_BT470BG:
    case AVCOL_SPC_SMPTE170M:
    case AVCOL_SPC_FCC:
      return "bt601";
    case AVCOL_SPC_BT2020_NCL:
    case AVCOL_SPC_BT2020_CL:
      return "bt2020";
    case AVCOL_SPC_UNSPECIFIED:
      // As players do.
      return frame.height < 720 ? "bt601" : "bt709";
    default:
      return "bt709";
  }
}

PixelSize squarePixels(const AVFrame& frame, const AVStream& stream) {
  AVRational aspect = frame.sample_aspect_ratio;
  if (aspect.num <= 0 || aspect.den <= 0) aspect = stream.codecpar->sample_aspect_ratio;
  const bool isSquare = aspect.num <= 0 || aspect.den <= 0;
  const std::int64_t width =
      isSquare ? frame.width : av_rescale(frame.width, aspect.num, aspect.den);
  return {static_cast<std::uint32_t>(std::clamp<std::int64_t>(width, 1, StillLimits::maxSide)),
          static_cast<std::uint32_t>(frame.height)};
}

/// Reduces before anything else, so that the other filters have little to do.
std::string reducingFilters(const AVFrame& frame, const PixelSize& size) {
  const bool isHdr = isHighDynamicRange(*parametersOf(frame));
  const bool isFull = frame.color_range == AVCOL_RANGE_JPEG ||
                      frame.format == AV_PIX_FMT_YUVJ420P || frame.format == AV_PIX_FMT_YUVJ422P ||
                      frame.format == AV_PIX_FMT_YUVJ444P;
  const std::string scale = fmt::format("scale=w={}:h={}:flags=area+accurate_rnd+full_chroma_int",
                                        size.width, size.height);
  if (isHdr)
    return scale + ",format=yuv444p10," + toneMappingFilters(*parametersOf(frame)) +
           ",zscale=t=iec61966-2-1,format=gbrp,format=rgb24";
  return fmt::format("{}:in_color_matrix={}:in_range={},format=rgb24", scale, matrixNameOf(frame),
                     isFull ? "full" : "limited");
}

/// Returns the profile of a film's colours. Unknown colours are shown as sRGB.
std::string profileOfFrame(const AVFrame& frame) {
  if (isHighDynamicRange(*parametersOf(frame))) return {};
  try {
    return profileOf(CodedColours{frame.color_primaries, frame.color_trc});
  } catch (const ConversionError&) {
    return {};
  }
}

}  // namespace

bool isIsoFilm(std::span<const char> source) {
  constexpr std::string_view boxes[] = {"ftyp", "moov", "mdat", "wide", "free", "skip"};
  const std::string_view bytes{source.data(), source.size()};
  return bytes.size() >= 12 &&
         std::find(std::begin(boxes), std::end(boxes), bytes.substr(4, 4)) != std::end(boxes);
}

DecodedStill decodeFirstPicture(std::span<const char> source, std::uint32_t longestSide) {
  FilmSource film{source};
  av::Frame frame = firstPicture(film);
  completeColours(*frame, *film.picture().codecpar);
  const PixelSize size = shrunkSize(squarePixels(*frame, film.picture()), longestSide);
  const std::string filters = reducingFilters(*frame, size);
  const std::string icc = profileOfFrame(*frame);
  DecodedStill still = filtered(std::move(frame), filters);
  still.metadata.icc = icc;
  if (const auto matrix = film.displayMatrix()) still.orientation = orientationOf(*matrix);
  return still;
}

bool isGifOrBmp(std::span<const char> source) {
  const std::string_view bytes{source.data(), source.size()};
  return bytes.starts_with("GIF8") || bytes.starts_with("BM");
}

DecodedStill decodeGifOrBmp(std::span<const char> source) {
  const AVCodec* const codec =
      avcodec_find_decoder(source[0] == 'G' ? AV_CODEC_ID_GIF : AV_CODEC_ID_BMP);
  if (codec == nullptr) throw ConversionError{ConversionFailure::unsupported};
  const av::Codec decoder = av::makeCodec(codec);
  decoder->thread_count = 1;
  decoder->max_pixels = StillLimits::maxPixels;
  av::check(avcodec_open2(decoder.get(), codec, nullptr), ConversionFailure::unsupported);
  const av::Packet packet = av::makePacket();
  av::check(av_new_packet(packet.get(), static_cast<int>(source.size())),
            ConversionFailure::tooLarge);
  std::copy(source.begin(), source.end(), packet->data);
  av::Frame frame = av::makeFrame();
  av::check(avcodec_send_packet(decoder.get(), packet.get()), ConversionFailure::damagedInput);
  av::check(avcodec_receive_frame(decoder.get(), frame.get()), ConversionFailure::damagedInput);
  const auto* const format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame->format));
  const bool hasOpacity =
      format != nullptr && (format->flags & (AV_PIX_FMT_FLAG_ALPHA | AV_PIX_FMT_FLAG_PAL)) != 0;
  return filtered(std::move(frame), hasOpacity ? "format=rgba" : "format=rgb24");
}

int orientationOf(const DisplayMatrix& matrix) {
  // x' = a x + c y and y' = b x + d y, with y downwards (ISO/IEC 14496-12, 6.2.2).
  const std::int64_t a = matrix[0], b = matrix[1], c = matrix[3], d = matrix[4];
  const bool isTransposed = std::abs(b) > std::abs(a);
  if (!isTransposed) return a >= 0 ? (d >= 0 ? 1 : 4) : (d >= 0 ? 2 : 3);
  return b >= 0 ? (c >= 0 ? 5 : 6) : (c >= 0 ? 8 : 7);
}

}  // namespace tavrix
