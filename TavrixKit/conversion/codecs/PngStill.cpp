#include <png.h>

#include <bit>
#include <cstring>
#include <string_view>

#include "conversion/codecs/ColourProfile.h"
#include "conversion/codecs/DecodedStill.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

/// The reading of one file. The library expects its error handler not to return; see JpegEncoder.
class PngReading {
 public:
  explicit PngReading(std::span<const char> source) : rest_(source) {
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, refuse, ignore);
    info_ = png_ == nullptr ? nullptr : png_create_info_struct(png_);
    if (info_ == nullptr) throw std::bad_alloc{};
    // The size is checked once it is known, because a picture that is too large is not damaged.
    png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_chunk_malloc_max(png_, StillLimits::maxMetadata);
    png_set_read_fn(png_, this, read);
    png_set_crc_action(png_, PNG_CRC_ERROR_QUIT, PNG_CRC_ERROR_QUIT);
    takeTextsOver();
  }
  ~PngReading() { png_destroy_read_struct(&png_, &info_, nullptr); }
  PngReading(const PngReading&) = delete;
  PngReading& operator=(const PngReading&) = delete;

  png_structp png() const { return png_; }
  png_infop info() const { return info_; }
  const std::string& xmp() const { return xmp_; }

 private:
  /// Skips the texts of the file except its XMP packet, which is never compressed. The library
  /// would decompress a thousand of them, each to megabytes.
  void takeTextsOver() {
    static constexpr png_byte skipped[] = "tEXt\0zTXt";
    static constexpr png_byte taken[] = "iTXt";
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, skipped, 2);
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_IF_SAFE, taken, 1);
    png_set_read_user_chunk_fn(png_, this, takeText);
  }
  /// Returns 1 for a text, which the library need not keep, and 0 for other chunks that it does not
  /// know.
  static int takeText(png_structp png, png_unknown_chunkp chunk) {
    // Keyword, flag and method of compression, empty language and translated keyword.
    static constexpr std::string_view xmpHead{"XML:com.adobe.xmp\0\0\0\0\0", 22};
    auto& self = *static_cast<PngReading*>(png_get_user_chunk_ptr(png));
    const std::string_view text{reinterpret_cast<const char*>(chunk->data), chunk->size};
    const std::string_view name{reinterpret_cast<const char*>(chunk->name), 4};
    if (name != "iTXt") return 0;
    if (text.starts_with(xmpHead)) self.xmp_ = text.substr(xmpHead.size());
    return 1;
  }

  [[noreturn]] static void refuse(png_structp, png_const_charp) {
    throw ConversionError{ConversionFailure::damagedInput};
  }
  static void ignore(png_structp, png_const_charp) {}
  static void read(png_structp png, png_bytep to, std::size_t count) {
    auto& self = *static_cast<PngReading*>(png_get_io_ptr(png));
    if (count > self.rest_.size()) refuse(png, nullptr);
    std::memcpy(to, self.rest_.data(), count);
    self.rest_ = self.rest_.subspan(count);
  }

  std::span<const char> rest_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
  std::string xmp_;
};

/// Rows as they are decompressed; an interlaced picture is decompressed as a whole first.
class PngRows : public PixelRows {
 public:
  explicit PngRows(std::shared_ptr<PngReading> reading) : reading_(std::move(reading)) {
    png_structp const png = reading_->png();
    png_infop const info = reading_->info();
    png_set_expand(png);
    if (std::endian::native == std::endian::little) png_set_swap(png);
    const int passes = png_set_interlace_handling(png);
    png_read_update_info(png, info);
    width = png_get_image_width(png, info);
    height = png_get_image_height(png, info);
    channels = png_get_channels(png, info);
    bits = png_get_bit_depth(png, info);
    rowBytes_ = png_get_rowbytes(png, info);
    anyOrder = passes > 1;
    buffer_.resize(anyOrder ? rowBytes_ * height : rowBytes_);
    for (int pass = 0; anyOrder && pass < passes; ++pass) {
      for (std::uint32_t y = 0; y < height; ++y) png_read_row(png, at(y), nullptr);
    }
  }
  const std::byte* row(std::uint32_t y) override {
    if (anyOrder) return buffer_.data() + y * rowBytes_;
    png_read_row(reading_->png(), at(0), nullptr);
    // The data after the pixels must be present, too; otherwise the file is truncated.
    if (y + 1 == height) png_read_end(reading_->png(), nullptr);
    return buffer_.data();
  }

 private:
  png_bytep at(std::uint32_t y) {
    return reinterpret_cast<png_bytep>(buffer_.data() + y * rowBytes_);
  }

  std::shared_ptr<PngReading> reading_;
  std::size_t rowBytes_ = 0;
  std::vector<std::byte> buffer_;
};

std::string measuredProfile(const PngReading& reading) {
  MeasuredColours colours;
  double fileGamma = 0;
  if (png_get_gAMA(reading.png(), reading.info(), &fileGamma) == 0 || fileGamma <= 0) return {};
  png_get_cHRM(reading.png(), reading.info(), &colours.whiteX, &colours.whiteY, &colours.redX,
               &colours.redY, &colours.greenX, &colours.greenY, &colours.blueX, &colours.blueY);
  colours.gamma = 1 / fileGamma;
  return profileOf(colours);
}

std::string profileOf(const PngReading& reading) {
  png_charp name = nullptr;
  png_bytep bytes = nullptr;
  png_uint_32 size = 0;
  int compression = 0;
  if (png_get_iCCP(reading.png(), reading.info(), &name, &compression, &bytes, &size) != 0)
    return {reinterpret_cast<const char*>(bytes), size};
  const bool isGrey =
      (png_get_color_type(reading.png(), reading.info()) & PNG_COLOR_MASK_COLOR) == 0;
  int intent = 0;
  if (png_get_sRGB(reading.png(), reading.info(), &intent) != 0 || isGrey) return {};
  return measuredProfile(reading);
}

StillMetadata metadataOf(const PngReading& reading) {
  StillMetadata metadata;
  png_uint_32 exifSize = 0;
  png_bytep exif = nullptr;
  if (png_get_eXIf_1(reading.png(), reading.info(), &exifSize, &exif) != 0)
    metadata.exif.assign(reinterpret_cast<const char*>(exif), exifSize);
  metadata.xmp = reading.xmp();
  metadata.icc = profileOf(reading);
  return metadata;
}

/// Returns true if the file has an animation: a chunk "acTL" before the first image data.
bool isAnimated(std::span<const char> source) {
  constexpr std::size_t signature = 8;
  constexpr std::size_t around = 12;  // a chunk's length, type and checksum
  const std::string_view file{source.data(), source.size()};
  for (std::size_t at = signature; at + around <= file.size();) {
    const std::string_view type = file.substr(at + 4, 4);
    if (type == "acTL") return true;
    if (type == "IDAT") return false;
    std::uint64_t length = 0;
    for (const char byte : file.substr(at, 4))
      length = length << 8U | static_cast<unsigned char>(byte);
    if (length > file.size() - at) return false;
    at += static_cast<std::size_t>(length) + around;
  }
  return false;
}

}  // namespace

DecodedStill decodePng(std::span<const char> source, const StillReading& how) {
  if (how.rejectsSeveral && isAnimated(source))
    throw ConversionError{ConversionFailure::severalPictures};
  const auto reading = std::make_shared<PngReading>(source);
  png_read_info(reading->png(), reading->info());
  DecodedStill still;
  still.width = png_get_image_width(reading->png(), reading->info());
  still.height = png_get_image_height(reading->png(), reading->info());
  checkStillSize(still.width, still.height);
  still.metadata = metadataOf(*reading);
  still.orientation = orientationOf(still.metadata.exif);
  still.rows = std::make_unique<PngRows>(reading);
  return still;
}

}  // namespace tavrix
