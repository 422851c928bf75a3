#include "conversion/codecs/HevcPlugin.h"

#include <libheif/heif.h>
#include <libheif/heif_plugin.h>

#include <cstring>
#include <new>

#include "conversion/codecs/HevcDecoder.h"
#include "transfer/MediaConverter.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace tavrix {
namespace {

constexpr heif_error success{heif_error_Ok, heif_suberror_Unspecified, "Success"};
constexpr heif_error damaged{heif_error_Decoder_plugin_error, heif_suberror_Unspecified,
                             "Damaged picture"};
constexpr heif_error noMemory{heif_error_Memory_allocation_error, heif_suberror_Unspecified,
                              "Out of memory"};
constexpr heif_error unsupported{heif_error_Unsupported_feature,
                                 heif_suberror_Unsupported_color_conversion, "Unsupported picture"};

void throwUnlessOk(const heif_error& error) {
  if (error.code != heif_error_Ok) throw heif_error{error};
}

/// Returns the kind of chroma according to its subsampling.
heif_chroma chromaOf(const AVPixFmtDescriptor& format) {
  if (format.nb_components == 1) return heif_chroma_monochrome;
  if (format.log2_chroma_w == 0) return heif_chroma_444;
  return format.log2_chroma_h == 0 ? heif_chroma_422 : heif_chroma_420;
}

void copyPlane(const AVFrame& frame, const AVPixFmtDescriptor& format, int number,
               heif_image* image) {
  constexpr heif_channel channels[] = {heif_channel_Y, heif_channel_Cb, heif_channel_Cr};
  const int depth = format.comp[number].depth;
  const int width = number == 0 ? frame.width : AV_CEIL_RSHIFT(frame.width, format.log2_chroma_w);
  const int height =
      number == 0 ? frame.height : AV_CEIL_RSHIFT(frame.height, format.log2_chroma_h);
  throwUnlessOk(heif_image_add_plane(image, channels[number], width, height, depth));
  int stride = 0;
  std::uint8_t* const to = heif_image_get_plane(image, channels[number], &stride);
  const auto bytes = static_cast<std::size_t>(width) * (depth > 8 ? 2 : 1);
  for (int y = 0; y < height; ++y) {
    std::memcpy(to + std::ptrdiff_t{stride} * y,
                frame.data[number] + std::ptrdiff_t{frame.linesize[number]} * y, bytes);
  }
}

void setColours(const AVFrame& frame, heif_image* image) {
  const std::unique_ptr<heif_color_profile_nclx, void (*)(heif_color_profile_nclx*)> colours{
      heif_nclx_color_profile_alloc(), heif_nclx_color_profile_free};
  if (colours == nullptr) throw std::bad_alloc{};
  // Both libraries use the numbers of ITU-T H.273.
  colours->color_primaries = static_cast<heif_color_primaries>(frame.color_primaries);
  colours->transfer_characteristics = static_cast<heif_transfer_characteristics>(frame.color_trc);
  colours->matrix_coefficients = static_cast<heif_matrix_coefficients>(frame.colorspace);
  colours->full_range_flag = frame.color_range == AVCOL_RANGE_JPEG ? 1 : 0;
  throwUnlessOk(heif_image_set_nclx_color_profile(image, colours.get()));
}

heif_image* imageOf(const AVFrame& frame) {
  const auto* const format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
  constexpr std::uint64_t strange =
      AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL | AV_PIX_FMT_FLAG_HWACCEL | AV_PIX_FMT_FLAG_BE;
  if (format == nullptr || (format->flags & strange) != 0 ||
      (format->nb_components != 1 && format->nb_components != 3))
    throw heif_error{unsupported};
  const bool isGrey = format->nb_components == 1;
  heif_image* image = nullptr;
  throwUnlessOk(heif_image_create(frame.width, frame.height,
                                  isGrey ? heif_colorspace_monochrome : heif_colorspace_YCbCr,
                                  chromaOf(*format), &image));
  std::unique_ptr<heif_image, void (*)(const heif_image*)> owner{image, heif_image_release};
  for (int i = 0; i < format->nb_components; ++i) copyPlane(frame, *format, i, image);
  setColours(frame, image);
  return owner.release();
}

/// The data that the library pushes for one picture: its units in order, the parameter sets first.
using Units = std::string;

/// Calls a function and returns its failure as a value, because a plugin must not throw.
template <typename Function>
heif_error guarded(Function function) noexcept {
  try {
    function();
    return success;
  } catch (const heif_error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return noMemory;
  } catch (...) {
    return damaged;
  }
}

heif_error newDecoder(void** decoder) {
  return guarded([&] { *decoder = new Units; });
}
void freeDecoder(void* decoder) { delete static_cast<Units*>(decoder); }
heif_error pushData(void* decoder, const void* data, std::size_t size) {
  return guarded(
      [&] { static_cast<Units*>(decoder)->append(static_cast<const char*>(data), size); });
}
heif_error decodeImage(void* decoder, heif_image** image) {
  return guarded([&] {
    HevcDecoder hevc;
    *image = imageOf(hevc.decode({}, *static_cast<const Units*>(decoder)));
  });
}

int priorityFor(heif_compression_format format) {
  constexpr int aboveTheOthers = 1000;
  return format == heif_compression_HEVC ? aboveTheOthers : 0;
}

constexpr heif_decoder_plugin plugin{
    .plugin_api_version = 3,
    .get_plugin_name = [] { return "HEVC decoder that conceals no damage"; },
    .init_plugin = nullptr,
    .deinit_plugin = nullptr,
    .does_support_format = priorityFor,
    .new_decoder = newDecoder,
    .free_decoder = freeDecoder,
    .push_data = pushData,
    .decode_image = decodeImage,
    .set_strict_decoding = [](void*, int) {},
    .id_name = "strict-hevc",
};

}  // namespace

void useOwnHevcDecoder() {
  [[maybe_unused]] static const heif_error registered = heif_register_decoder_plugin(&plugin);
}

}  // namespace tavrix
