#pragma once

#include <functional>
#include <memory>

#include "conversion/ByteSink.h"
#include "conversion/StillMetadata.h"
#include "conversion/codecs/DecodedStill.h"

namespace tavrix {

/// Writes one JPEG file (ITU-T T.81, baseline) as its rows come. Throws ConversionError, and what
/// the sink throws.
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

  /// Rows follow by write(), from the top on, then finish().
  void begin(const Format& format, const StillMetadata& metadata);
  void write(const std::uint8_t* row);
  void finish();
  /// The whole picture at once, its chroma stored as it is sampled.
  void writePlanes(const YcbcrPlanes& planes, int quality, const StillMetadata& metadata,
                   const std::function<void(double)>& progress);

 private:
  struct Compression;
  std::unique_ptr<Compression> compression_;
};

/// libjpeg's quality for one of 0 to 1: its hundredfold, at least 1.
int jpegQualityOf(double quality);

}  // namespace tavrix
