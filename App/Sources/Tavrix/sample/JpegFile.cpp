#include "sample/JpegFile.h"

#include <cstdio>
// jpeglib.h requires <cstdio> first.
#include <jpeglib.h>

#include <cstdlib>
#include <vector>

namespace tavrix {
namespace {

constexpr int quality = 88;

/// Compresses into memory. The only possible failure is lack of memory; libjpeg then ends the
/// program.
class Compression {
 public:
  Compression(int width, int height) {
    info_.err = jpeg_std_error(&errors_);
    jpeg_create_compress(&info_);
    jpeg_mem_dest(&info_, &buffer_, &size_);
    info_.image_width = static_cast<JDIMENSION>(width);
    info_.image_height = static_cast<JDIMENSION>(height);
    info_.input_components = 3;
    info_.in_color_space = JCS_RGB;
    jpeg_set_defaults(&info_);
    jpeg_set_quality(&info_, quality, TRUE);
  }
  Compression(const Compression&) = delete;
  Compression& operator=(const Compression&) = delete;
  ~Compression() {
    jpeg_destroy_compress(&info_);
    std::free(buffer_);  // NOLINT: allocated by libjpeg
  }

  void start(const std::string& exif) {
    info_.write_JFIF_header = exif.empty() ? TRUE : FALSE;
    jpeg_start_compress(&info_, TRUE);
    if (exif.empty()) return;
    jpeg_write_marker(&info_, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(exif.data()),
                      static_cast<unsigned>(exif.size()));
  }
  void addRow(std::vector<std::uint8_t>& row) {
    JSAMPROW pixels = row.data();
    jpeg_write_scanlines(&info_, &pixels, 1);
  }
  std::string finish() {
    jpeg_finish_compress(&info_);
    return {reinterpret_cast<const char*>(buffer_), size_};
  }

 private:
  jpeg_error_mgr errors_{};
  jpeg_compress_struct info_{};
  unsigned char* buffer_ = nullptr;
  unsigned long size_ = 0;
};

}  // namespace

std::string encodeJpeg(int width, int height, const RowSource& rows, const std::string& exif) {
  Compression compression{width, height};
  compression.start(exif);
  std::vector<std::uint8_t> row(static_cast<std::size_t>(width) * 3);
  for (int y = 0; y < height; ++y) {
    rows(y, row);
    compression.addRow(row);
  }
  return compression.finish();
}

}  // namespace tavrix
