#include "conversion/codecs/PictureFilter.h"

#include <fmt/format.h>

#include <new>

#include "transfer/MediaConverter.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace tavrix {
namespace {

using av::check;

/// From ITU-R BT.2408, in candela per square metre: the luminance of white paper in high dynamic
/// range, which becomes the white of the standard range, and the nominal peak.
constexpr int whiteLuminance = 203;
constexpr int peakLuminance = 1000;

std::string filtersFor(const AVCodecParameters& pictures) {
  if (isHighDynamicRange(pictures))
    return toneMappingFilters(pictures) +
           ",zscale=t=709:m=709:p=709:r=limited:d=ordered,format=yuv420p";
  if (isPlainPicture(pictures)) return "null";
  const AVPixFmtDescriptor* const format =
      av_pix_fmt_desc_get(static_cast<AVPixelFormat>(pictures.format));
  const bool isYuv = (format->flags & AV_PIX_FMT_FLAG_RGB) == 0 && format->nb_components >= 3;
  // Dithered, so that a smooth sky shows no steps.
  if (isYuv && format->comp[0].depth > 8) return "zscale=d=ordered,format=yuv420p";
  return "format=yuv420p";
}

/// Describes the decoder's output in the syntax of FFmpeg's command line.
std::string describe(const AVCodecParameters& pictures, AVRational unit) {
  const AVRational aspect = pictures.sample_aspect_ratio;
  return fmt::format("video_size={}x{}:pix_fmt={}:time_base={}/{}:pixel_aspect={}/{}",
                     pictures.width, pictures.height, pictures.format, unit.num, unit.den,
                     aspect.num, aspect.den == 0 ? 1 : aspect.den);
}

void setColours(AVCodecParameters& parameters, bool wasHighDynamicRange) {
  if (!wasHighDynamicRange) return;
  parameters.color_primaries = AVCOL_PRI_BT709;
  parameters.color_trc = AVCOL_TRC_BT709;
  parameters.color_space = AVCOL_SPC_BT709;
  parameters.color_range = AVCOL_RANGE_MPEG;
}

}  // namespace

/// Makes paper white 1 and compresses values above the knee.
std::string toneMappingFilters(const AVCodecParameters& pictures) {
  const char* const transfer =
      pictures.color_trc == AVCOL_TRC_SMPTE2084 ? "smpte2084" : "arib-std-b67";
  const char* const range = pictures.color_range == AVCOL_RANGE_JPEG ? "full" : "limited";
  return fmt::format(
      "zscale=tin={}:min=2020_ncl:pin=2020:rin={}:t=linear:npl={},format=gbrpf32le,"
      "zscale=p=709,tonemap=tonemap=mobius:param=0.5:peak={:.3f}:desat=0",
      transfer, range, whiteLuminance, double{peakLuminance} / whiteLuminance);
}

bool isHighDynamicRange(const AVCodecParameters& pictures) {
  return pictures.color_trc == AVCOL_TRC_ARIB_STD_B67 || pictures.color_trc == AVCOL_TRC_SMPTE2084;
}

bool isPlainPicture(const AVCodecParameters& pictures) {
  return pictures.format == AV_PIX_FMT_YUV420P || pictures.format == AV_PIX_FMT_YUVJ420P;
}

PictureFilter::PictureFilter(const AVCodecParameters& pictures, AVRational unit)
    : PictureFilter(pictures, unit, filtersFor(pictures)) {}

PictureFilter::PictureFilter(const AVCodecParameters& pictures, AVRational unit,
                             const std::string& filters)
    : graph_(avfilter_graph_alloc()), result_(avcodec_parameters_alloc()) {
  if (!graph_ || !result_) throw std::bad_alloc{};
  constexpr auto failure = ConversionFailure::unsupportedColour;
  check(avfilter_graph_create_filter(&source_, avfilter_get_by_name("buffer"), "in",
                                     describe(pictures, unit).c_str(), nullptr, graph_.get()),
        failure);
  check(avfilter_graph_create_filter(&sink_, avfilter_get_by_name("buffersink"), "out", nullptr,
                                     nullptr, graph_.get()),
        failure);
  AVFilterInOut* outputs = avfilter_inout_alloc();
  AVFilterInOut* inputs = avfilter_inout_alloc();
  if (outputs == nullptr || inputs == nullptr) throw std::bad_alloc{};
  *outputs = {av_strdup("in"), source_, 0, nullptr};
  *inputs = {av_strdup("out"), sink_, 0, nullptr};
  const int parsed =
      avfilter_graph_parse_ptr(graph_.get(), filters.c_str(), &inputs, &outputs, nullptr);
  avfilter_inout_free(&inputs);
  avfilter_inout_free(&outputs);
  check(parsed, failure);
  check(avfilter_graph_config(graph_.get(), nullptr), failure);
  check(avcodec_parameters_copy(result_.get(), &pictures), failure);
  result_->format = av_buffersink_get_format(sink_);
  result_->width = av_buffersink_get_w(sink_);
  result_->height = av_buffersink_get_h(sink_);
  setColours(*result_, isHighDynamicRange(pictures));
}

void PictureFilter::push(AVFrame* frame) {
  check(av_buffersrc_add_frame(source_, frame), ConversionFailure::unsupportedColour);
}

bool PictureFilter::pull(AVFrame& frame) {
  const int result = av_buffersink_get_frame(sink_, &frame);
  if (av::isDrained(result)) return false;
  check(result, ConversionFailure::unsupportedColour);
  return true;
}

}  // namespace tavrix
