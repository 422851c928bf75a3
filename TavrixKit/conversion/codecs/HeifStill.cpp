#include <libheif/heif.h>

#include <algorithm>

#include "conversion/codecs/ColourProfile.h"
#include "conversion/codecs/DecodedStill.h"
#include "conversion/codecs/HeifReferences.h"
#include "conversion/codecs/HevcPlugin.h"
#include "conversion/codecs/TiledStill.h"
#include "device/metadata/HeifItems.h"
#include "device/metadata/MemoryReader.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

using Context = std::shared_ptr<heif_context>;
using Handle = std::shared_ptr<heif_image_handle>;
using Image = std::shared_ptr<heif_image>;

void require(const heif_error& error) {
  switch (error.code) {
    case heif_error_Ok:
      return;
    case heif_error_Memory_allocation_error:
      throw ConversionError{error.subcode == heif_suberror_Security_limit_exceeded
                                ? ConversionFailure::tooLarge
                                : ConversionFailure::tooMuchMemory};
    case heif_error_Unsupported_feature:
    case heif_error_Unsupported_filetype:
      throw ConversionError{ConversionFailure::unsupported};
    default:
      throw ConversionError{ConversionFailure::damagedInput};
  }
}

std::string bytesAt(std::span<const char> source, const std::optional<HeifItems::Extent>& extent) {
  if (!extent) return {};
  if (extent->length > StillLimits::maxMetadata)
    throw ConversionError{ConversionFailure::metadataTooLarge};
  if (extent->begin > source.size() || extent->length > source.size() - extent->begin)
    throw ConversionError{ConversionFailure::damagedInput};
  return {source.data() + extent->begin, static_cast<std::size_t>(extent->length)};
}

using Nclx = std::shared_ptr<heif_color_profile_nclx>;

Nclx nclxOf(const Handle& handle) {
  heif_color_profile_nclx* colours = nullptr;
  if (heif_image_handle_get_nclx_color_profile(handle.get(), &colours).code != heif_error_Ok)
    return nullptr;
  return {colours, heif_nclx_color_profile_free};
}

std::string iccOf(const Handle& handle) {
  std::string icc(heif_image_handle_get_raw_color_profile_size(handle.get()), '\0');
  if (icc.size() > StillLimits::maxMetadata)
    throw ConversionError{ConversionFailure::metadataTooLarge};
  if (!icc.empty()) require(heif_image_handle_get_raw_color_profile(handle.get(), icc.data()));
  if (!icc.empty()) return icc;
  const Nclx nclx = nclxOf(handle);
  if (nclx == nullptr) return {};
  return profileOf(CodedColours{static_cast<int>(nclx->color_primaries),
                                static_cast<int>(nclx->transfer_characteristics)});
}

/// Returns true if luma and chroma are encoded as in JPEG. All readers assume so if the file does
/// not declare it.
bool hasJpegMatrix(const heif_color_profile_nclx* nclx) {
  if (nclx == nullptr) return true;
  const int matrix = nclx->matrix_coefficients;
  return nclx->full_range_flag != 0 && (matrix == 2 || matrix == 5 || matrix == 6);
}

/// Interleaved rows of a decoded picture, or those of its only plane.
class HeifRows : public PixelRows {
 public:
  HeifRows(Image image, heif_channel channel, int channelCount) : image_(std::move(image)) {
    begin_ = heif_image_get_plane_readonly(image_.get(), channel, &stride_);
    width = static_cast<std::uint32_t>(heif_image_get_width(image_.get(), channel));
    height = static_cast<std::uint32_t>(heif_image_get_height(image_.get(), channel));
    channels = channelCount;
    bits = heif_image_get_bits_per_pixel_range(image_.get(), channel);
    anyOrder = true;
    if (begin_ == nullptr || bits < 8 || bits > 16)
      throw ConversionError{ConversionFailure::unsupported};
  }
  const std::byte* row(std::uint32_t y) override {
    return reinterpret_cast<const std::byte*>(begin_ + static_cast<std::size_t>(stride_) * y);
  }

 private:
  Image image_;
  const std::uint8_t* begin_ = nullptr;
  int stride_ = 0;
};

/// Rows of a picture with separate red, green and blue planes, the form in which the library
/// returns tiled pictures.
class PlanarRows : public PixelRows {
 public:
  explicit PlanarRows(const Image& image)
      : red_(image, heif_channel_R, 1),
        green_(image, heif_channel_G, 1),
        blue_(image, heif_channel_B, 1) {
    width = red_.width;
    height = red_.height;
    anyOrder = true;
    const bool isEven = green_.width == width && blue_.width == width && green_.height == height &&
                        blue_.height == height;
    if (!isEven) throw ConversionError{ConversionFailure::damagedInput};
    row_.resize(std::size_t{width} * 3);
  }
  const std::byte* row(std::uint32_t y) override {
    const std::byte* const red = red_.row(y);
    const std::byte* const green = green_.row(y);
    const std::byte* const blue = blue_.row(y);
    for (std::size_t x = 0; x < width; ++x) {
      row_[3 * x] = red[x];
      row_[3 * x + 1] = green[x];
      row_[3 * x + 2] = blue[x];
    }
    return row_.data();
  }

 private:
  HeifRows red_;
  HeifRows green_;
  HeifRows blue_;
  std::vector<std::byte> row_;
};

bool isPlanarRgb8(const Image& image) {
  return heif_image_get_colorspace(image.get()) == heif_colorspace_RGB &&
         heif_image_get_chroma_format(image.get()) == heif_chroma_444 &&
         heif_image_get_bits_per_pixel_range(image.get(), heif_channel_R) == 8;
}

Image decode(const Handle& handle, heif_colorspace space, heif_chroma chroma, bool isTurned) {
  const std::unique_ptr<heif_decoding_options, void (*)(heif_decoding_options*)> options{
      heif_decoding_options_alloc(), heif_decoding_options_free};
  if (options == nullptr) throw std::bad_alloc{};
  options->strict_decoding = 1;
  options->ignore_transformations = isTurned ? 0 : 1;
  heif_image* image = nullptr;
  require(heif_decode_image(handle.get(), &image, space, chroma, options.get()));
  return {image, heif_image_release};
}

YcbcrPlanes planesOf(const Image& image) {
  YcbcrPlanes result;
  constexpr heif_channel channels[] = {heif_channel_Y, heif_channel_Cb, heif_channel_Cr};
  for (std::size_t i = 0; i < 3; ++i) {
    int stride = 0;
    auto& plane = result.planes.at(i);
    plane.begin = heif_image_get_plane_readonly(image.get(), channels[i], &stride);
    plane.stride = static_cast<std::size_t>(stride);
    plane.width = static_cast<std::uint32_t>(heif_image_get_width(image.get(), channels[i]));
    plane.height = static_cast<std::uint32_t>(heif_image_get_height(image.get(), channels[i]));
    if (plane.begin == nullptr || plane.width == 0 || plane.height == 0)
      throw ConversionError{ConversionFailure::damagedInput};
  }
  const heif_chroma chroma = heif_image_get_chroma_format(image.get());
  result.horizontalSampling = chroma == heif_chroma_444 ? 1 : 2;
  result.verticalSampling = chroma == heif_chroma_420 ? 2 : 1;
  result.owner = image;
  return result;
}

bool isYcbcr8(const Image& image) {
  const heif_chroma chroma = heif_image_get_chroma_format(image.get());
  return heif_image_get_colorspace(image.get()) == heif_colorspace_YCbCr &&
         (chroma == heif_chroma_420 || chroma == heif_chroma_422 || chroma == heif_chroma_444) &&
         heif_image_get_bits_per_pixel_range(image.get(), heif_channel_Y) == 8 &&
         heif_image_get_bits_per_pixel_range(image.get(), heif_channel_Cb) == 8;
}

bool hasJpegMatrix(const Image& image) {
  heif_color_profile_nclx* colours = nullptr;
  if (heif_image_get_nclx_color_profile(image.get(), &colours).code != heif_error_Ok) return true;
  const Nclx nclx{colours, heif_nclx_color_profile_free};
  return hasJpegMatrix(nclx.get());
}

/// Decodes the tiles in which phones store a picture. The library would convert each of them to
/// red, green and blue; here they stay luma and chroma. Returns false for any other picture.
bool decodeTiled(std::span<const char> source, bool isTold, DecodedStill& still) {
  auto tiles = readHeifTiles(source);
  if (!tiles) return false;
  if (!still.isTurned) tiles->quarterTurns = 0;
  const bool isTurned = tiles->quarterTurns % 2 != 0;
  const bool isWhole = (isTurned ? tiles->height : tiles->width) == still.width &&
                       (isTurned ? tiles->width : tiles->height) == still.height;
  if (isWhole) still.planes = decodeTiles(*tiles, isTold);
  still.isSubsampled = still.planes.has_value();
  return still.planes.has_value();
}

/// Decodes to planes if JPEG can store them unchanged, else to rows.
void decodePixels(std::span<const char> source, const Handle& handle, DecodedStill& still) {
  const int bits = heif_image_handle_get_luma_bits_per_pixel(handle.get());
  const bool hasAlpha = heif_image_handle_has_alpha_channel(handle.get()) != 0;
  const Nclx nclx = nclxOf(handle);
  const bool mayBePlanes = !hasAlpha && hasJpegMatrix(nclx.get());
  if (mayBePlanes && decodeTiled(source, nclx != nullptr, still)) return;
  if (mayBePlanes) {
    const Image image =
        decode(handle, heif_colorspace_undefined, heif_chroma_undefined, still.isTurned);
    if (heif_image_get_colorspace(image.get()) == heif_colorspace_monochrome) {
      still.rows = std::make_unique<HeifRows>(image, heif_channel_Y, 1);
      return;
    }
    still.isSubsampled = heif_image_get_chroma_format(image.get()) == heif_chroma_420;
    if (isYcbcr8(image) && hasJpegMatrix(image)) {
      still.planes = planesOf(image);
      return;
    }
    if (isPlanarRgb8(image)) {
      still.rows = std::make_unique<PlanarRows>(image);
      return;
    }
  }
  const bool isDeep = bits > 8;
  const heif_chroma chroma =
      hasAlpha ? (isDeep ? heif_chroma_interleaved_RRGGBBAA_LE : heif_chroma_interleaved_RGBA)
               : (isDeep ? heif_chroma_interleaved_RRGGBB_LE : heif_chroma_interleaved_RGB);
  still.rows =
      std::make_unique<HeifRows>(decode(handle, heif_colorspace_RGB, chroma, still.isTurned),
                                 heif_channel_interleaved, hasAlpha ? 4 : 3);
}

/// Returns true if the file has pictures besides the primary one and the other views of its stereo
/// pair.
bool hasOtherPictures(const Context& context, const HeifItems& items) {
  std::vector<std::uint64_t> known = items.otherViews();
  known.push_back(items.primary());
  std::vector<heif_item_id> pictures(
      static_cast<std::size_t>(heif_context_get_number_of_top_level_images(context.get())));
  heif_context_get_list_of_top_level_image_IDs(context.get(), pictures.data(),
                                               static_cast<int>(pictures.size()));
  return std::any_of(pictures.begin(), pictures.end(), [&](heif_item_id picture) {
    return std::find(known.begin(), known.end(), picture) == known.end();
  });
}

}  // namespace

DecodedStill decodeHeif(std::span<char> source, const StillReading& reading) {
  MemoryReader reader{source};
  FileBytes file{reader};
  const auto items = HeifItems::open(file);
  if (!items) throw ConversionError{ConversionFailure::damagedInput};
  DecodedStill still;
  still.metadata.exif = bytesAt(source, items->exif());
  still.metadata.xmp = bytesAt(source, items->xmp());
  relaxHeifReferences(source);

  useOwnHevcDecoder();
  const Context context{heif_context_alloc(), heif_context_free};
  if (context == nullptr) throw std::bad_alloc{};
  // Several files are converted at once instead.
  heif_context_set_max_decoding_threads(context.get(), 0);
  heif_context_set_maximum_image_size_limit(context.get(), StillLimits::maxSide);
  require(heif_context_read_from_memory_without_copy(context.get(), source.data(), source.size(),
                                                     nullptr));
  if (reading.rejectsSeveral && hasOtherPictures(context, *items))
    throw ConversionError{ConversionFailure::severalPictures};
  heif_image_handle* primary = nullptr;
  require(heif_context_get_primary_image_handle(context.get(), &primary));
  const Handle handle{primary, [context](heif_image_handle* h) { heif_image_handle_release(h); }};
  const int storedWidth = heif_image_handle_get_ispe_width(primary);
  const int storedHeight = heif_image_handle_get_ispe_height(primary);
  still.isTurned = reading.turnsHeif;
  const int width = still.isTurned ? heif_image_handle_get_width(primary) : storedWidth;
  const int height = still.isTurned ? heif_image_handle_get_height(primary) : storedHeight;
  checkStillSize(static_cast<std::uint64_t>(std::max(width, 0)),
                 static_cast<std::uint64_t>(std::max(height, 0)));
  checkStillSize(static_cast<std::uint64_t>(std::max(storedWidth, 0)),
                 static_cast<std::uint64_t>(std::max(storedHeight, 0)));
  still.width = static_cast<std::uint32_t>(width);
  still.height = static_cast<std::uint32_t>(height);
  still.isCropped = std::minmax(width, height) != std::minmax(storedWidth, storedHeight);
  still.metadata.icc = iccOf(handle);
  decodePixels(source, handle, still);
  // The library has turned the pixels according to the file's own properties; the orientation in
  // Exif repeats that (ISO/IEC 23008-12, 6.5.10).
  still.orientation = 1;
  return still;
}

}  // namespace tavrix
