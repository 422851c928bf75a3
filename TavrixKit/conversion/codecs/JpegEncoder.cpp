#include "conversion/codecs/JpegEncoder.h"

#include <cstdio>
// jpeglib.h needs <cstdio> before it.
#include <jpeglib.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

/// The library expects its error handler not to return. Unwinding through it is safe if C code has
/// unwind tables, as on all supported 64-bit platforms.
[[noreturn]] void throwError(j_common_ptr info) {
  constexpr int outOfMemory = 56;  // JERR_OUT_OF_MEMORY
  throw ConversionError{info->err->msg_code == outOfMemory ? ConversionFailure::tooMuchMemory
                                                           : ConversionFailure::failed};
}
void ignoreMessage(j_common_ptr) {}

/// Passes the library's output to a sink, in pieces of equal size.
struct Destination {
  jpeg_destination_mgr manager{};
  ByteSink* sink = nullptr;
  std::vector<JOCTET> buffer = std::vector<JOCTET>(std::size_t{256} * 1024);

  static Destination& of(j_compress_ptr info) {
    return *static_cast<Destination*>(info->client_data);
  }
  void restart() {
    manager.next_output_byte = buffer.data();
    manager.free_in_buffer = buffer.size();
  }
  static void begin(j_compress_ptr info) { of(info).restart(); }
  static boolean flush(j_compress_ptr info) {
    Destination& self = of(info);
    self.sink->write(std::as_bytes(std::span{self.buffer}));
    self.restart();
    return TRUE;
  }
  static void end(j_compress_ptr info) {
    Destination& self = of(info);
    self.sink->write(std::as_bytes(
        std::span{self.buffer}.first(self.buffer.size() - self.manager.free_in_buffer)));
  }
};

}  // namespace

struct JpegEncoder::Compression {
  jpeg_error_mgr errors{};
  jpeg_compress_struct info{};
  Destination destination{};

  explicit Compression(ByteSink& sink) {
    info.err = jpeg_std_error(&errors);
    errors.error_exit = throwError;
    errors.output_message = ignoreMessage;
    jpeg_create_compress(&info);
    destination.sink = &sink;
    destination.manager.init_destination = Destination::begin;
    destination.manager.empty_output_buffer = Destination::flush;
    destination.manager.term_destination = Destination::end;
    info.dest = &destination.manager;
    info.client_data = &destination;
  }
  ~Compression() { jpeg_destroy_compress(&info); }
  Compression(const Compression&) = delete;
  Compression& operator=(const Compression&) = delete;

  void configure(std::uint32_t width, std::uint32_t height, int channels, int quality) {
    info.image_width = width;
    info.image_height = height;
    info.input_components = channels;
    info.in_color_space = channels == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, quality, TRUE);
    info.dct_method = JDCT_ISLOW;
  }
  void setLumaSampling(int horizontal, int vertical) {
    info.comp_info[0].h_samp_factor = horizontal;
    info.comp_info[0].v_samp_factor = vertical;
  }
  void start(const StillMetadata& metadata) {
    const std::vector<JpegSegment> segments = segmentsOf(metadata);
    // The Exif block must be the first segment.
    info.write_JFIF_header = metadata.exif.empty() ? TRUE : FALSE;
    jpeg_start_compress(&info, TRUE);
    for (const JpegSegment& segment : segments) {
      jpeg_write_marker(&info, segment.marker,
                        reinterpret_cast<const JOCTET*>(segment.payload.data()),
                        static_cast<unsigned>(segment.payload.size()));
    }
  }
};

JpegEncoder::JpegEncoder(ByteSink& sink) : compression_(std::make_unique<Compression>(sink)) {}
JpegEncoder::~JpegEncoder() = default;

void JpegEncoder::begin(const Format& format, const StillMetadata& metadata) {
  compression_->configure(format.width, format.height, format.channels, format.quality);
  const int sampling = format.isSubsampled ? 2 : 1;
  if (format.channels == 3) compression_->setLumaSampling(sampling, sampling);
  compression_->start(metadata);
}

void JpegEncoder::write(const std::uint8_t* row) {
  JSAMPROW pixels = const_cast<JSAMPROW>(row);
  jpeg_write_scanlines(&compression_->info, &pixels, 1);
}

void JpegEncoder::finish() { jpeg_finish_compress(&compression_->info); }

namespace {

/// The rows of one plane that a row of blocks needs, extended to whole blocks by repeating the
/// plane's edge.
class PlaneRows {
 public:
  PlaneRows(const YcbcrPlanes::Plane& plane, std::size_t width, std::size_t rows)
      : plane_(plane), width_(width), buffer_(width * rows), rows_(rows) {}

  JSAMPARRAY take(std::uint32_t top) {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      const auto y = std::min<std::size_t>(top + i, plane_.height - 1);
      const std::uint8_t* const from = plane_.begin + y * plane_.stride;
      std::uint8_t* const to = buffer_.data() + i * width_;
      std::copy_n(from, plane_.width, to);
      std::fill(to + plane_.width, to + width_, from[plane_.width - 1]);
      rows_[i] = to;
    }
    return rows_.data();
  }

 private:
  const YcbcrPlanes::Plane& plane_;
  std::size_t width_;
  std::vector<std::uint8_t> buffer_;
  std::vector<JSAMPROW> rows_;
};

}  // namespace

void JpegEncoder::writePlanes(const YcbcrPlanes& picture, int quality,
                              const StillMetadata& metadata,
                              const std::function<void(double)>& progress) {
  jpeg_compress_struct& info = compression_->info;
  const auto& luma = picture.planes[0];
  compression_->configure(luma.width, luma.height, 3, quality);
  jpeg_set_colorspace(&info, JCS_YCbCr);
  info.in_color_space = JCS_YCbCr;
  info.raw_data_in = TRUE;
  compression_->setLumaSampling(picture.horizontalSampling, picture.verticalSampling);
  compression_->start(metadata);

  const auto rowsAtOnce = static_cast<std::uint32_t>(DCTSIZE * picture.verticalSampling);
  const auto columnsAtOnce = static_cast<std::uint32_t>(DCTSIZE * picture.horizontalSampling);
  const std::size_t blocks = (luma.width + columnsAtOnce - 1) / columnsAtOnce;
  PlaneRows y{luma, blocks * columnsAtOnce, rowsAtOnce};
  PlaneRows cb{picture.planes[1], blocks * DCTSIZE, DCTSIZE};
  PlaneRows cr{picture.planes[2], blocks * DCTSIZE, DCTSIZE};
  for (std::uint32_t top = 0; top < luma.height; top += rowsAtOnce) {
    const auto chromaTop = top * DCTSIZE / rowsAtOnce;
    JSAMPARRAY rows[3] = {y.take(top), cb.take(chromaTop), cr.take(chromaTop)};
    jpeg_write_raw_data(&info, rows, rowsAtOnce);
    if (progress) progress(static_cast<double>(top) / luma.height);
  }
  jpeg_finish_compress(&info);
}

int jpegQualityOf(double quality) {
  return std::clamp(static_cast<int>(std::lround(quality * 100)), 1, 100);
}

}  // namespace tavrix
