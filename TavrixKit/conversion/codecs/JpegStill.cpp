#include <cstdio>
// jpeglib.h needs <cstdio> before it.
#include <jpeglib.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string_view>

#include "conversion/codecs/DecodedStill.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

/// The reading of one file. The library expects its error handler not to return; see JpegEncoder.
class JpegReading {
 public:
  JpegReading() {
    info_.err = jpeg_std_error(&errors_);
    errors_.error_exit = refuse;
    errors_.emit_message = [](j_common_ptr, int) {};
    errors_.output_message = [](j_common_ptr) {};
    jpeg_create_decompress(&info_);
  }
  ~JpegReading() { jpeg_destroy_decompress(&info_); }
  JpegReading(const JpegReading&) = delete;
  JpegReading& operator=(const JpegReading&) = delete;

  void begin(std::span<const char> source) {
    constexpr unsigned wholeSegment = 0xFFFF;
    jpeg_mem_src(&info_, reinterpret_cast<const unsigned char*>(source.data()), source.size());
    jpeg_save_markers(&info_, JPEG_APP0 + 1, wholeSegment);
    jpeg_save_markers(&info_, JPEG_APP0 + 2, wholeSegment);
    jpeg_read_header(&info_, TRUE);
  }
  jpeg_decompress_struct& info() { return info_; }

 private:
  [[noreturn]] static void refuse(j_common_ptr info) {
    constexpr int outOfMemory = 56;  // JERR_OUT_OF_MEMORY
    throw ConversionError{info->err->msg_code == outOfMemory ? ConversionFailure::tooMuchMemory
                                                             : ConversionFailure::damagedInput};
  }

  jpeg_error_mgr errors_{};
  jpeg_decompress_struct info_{};
};

class JpegRows : public PixelRows {
 public:
  explicit JpegRows(std::unique_ptr<JpegReading> reading) : reading_(std::move(reading)) {
    jpeg_decompress_struct& info = reading_->info();
    jpeg_start_decompress(&info);
    width = info.output_width;
    height = info.output_height;
    channels = info.output_components;
    buffer_.resize(std::size_t{width} * static_cast<std::size_t>(channels));
  }
  const std::byte* row(std::uint32_t) override {
    JSAMPROW pixels = buffer_.data();
    jpeg_read_scanlines(&reading_->info(), &pixels, 1);
    return reinterpret_cast<const std::byte*>(buffer_.data());
  }

 private:
  std::unique_ptr<JpegReading> reading_;
  std::vector<std::uint8_t> buffer_;
};

std::string exifBlockOf(const jpeg_decompress_struct& info) {
  constexpr std::string_view name{"Exif\0\0", 6};
  for (const auto* marker = info.marker_list; marker != nullptr; marker = marker->next) {
    const std::string_view data{reinterpret_cast<const char*>(marker->data), marker->data_length};
    if (marker->marker == JPEG_APP0 + 1 && data.starts_with(name))
      return std::string{data.substr(name.size())};
  }
  return {};
}

std::string profileIn(jpeg_decompress_struct& info) {
  JOCTET* bytes = nullptr;
  unsigned length = 0;
  if (jpeg_read_icc_profile(&info, &bytes, &length) == FALSE) return {};
  const std::unique_ptr<JOCTET, void (*)(void*)> owner{bytes, std::free};
  return {reinterpret_cast<const char*>(bytes), length};
}

/// Returns the number of eighths of the size at which the file is decoded. The library is fast for
/// powers of two.
unsigned eighths(std::uint64_t longerSide, std::uint64_t wanted) {
  for (const unsigned scale : {1U, 2U, 4U}) {
    // With less, the final reduction would blur some pixels more than others.
    if (longerSide * scale * 2 >= wanted * 8 * 3) return scale;
  }
  return 8;
}

}  // namespace

DecodedStill decodeJpeg(std::span<const char> source, std::uint32_t longestSide) {
  auto reading = std::make_unique<JpegReading>();
  reading->begin(source);
  jpeg_decompress_struct& info = reading->info();
  checkStillSize(info.image_width, info.image_height);
  if (info.num_components != 1 && info.num_components != 3)
    throw ConversionError{ConversionFailure::unsupportedColour};
  info.out_color_space = info.num_components == 1 ? JCS_GRAYSCALE : JCS_RGB;
  info.scale_num = eighths(std::max(info.image_width, info.image_height), longestSide);
  info.scale_denom = 8;
  DecodedStill still;
  still.metadata.exif = exifBlockOf(info);
  still.metadata.icc = profileIn(info);
  still.orientation = orientationOf(still.metadata.exif);
  still.rows = std::make_unique<JpegRows>(std::move(reading));
  still.width = still.rows->width;
  still.height = still.rows->height;
  return still;
}

}  // namespace tavrix
