#pragma once

#include <functional>
#include <memory>

#include "conversion/codecs/ByteSink.h"
#include "conversion/codecs/DecodedStill.h"
#include "conversion/codecs/StillMetadata.h"

namespace tavrix {

/// Writes one JPEG file (ITU-T T.81, baseline) row by row. Throws ConversionError, and what the
/// sink throws.
class JpegEncoder {
 public:
  struct Format {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int channels = 3;          ///< 1 grey, 3 RGB
    int quality = 85;          ///< 1 to 100, libjpeg's scale
    bool isSubsampled = true;  ///< chroma at half the resolution (4:2:0)
  };

  explicit JpegEncoder(ByteSink& sink);
  ~JpegEncoder();

  /// Begins a file. Call write() for each row from the top, then finish().
  void begin(const Format& format, const StillMetadata& metadata);
  void write(const std::uint8_t* row);
  void finish();
  /// Writes a whole picture at once, keeping the sampling of its chroma.
  void writePlanes(const YcbcrPlanes& planes, int quality, const StillMetadata& metadata,
                   const std::function<void(double)>& progress);

 private:
  struct Compression;
  std::unique_ptr<Compression> compression_;
};

/// Returns libjpeg's quality for a quality of 0 to 1: 100 times the value, at least 1.
int jpegQualityOf(double quality);

}  // namespace tavrix
