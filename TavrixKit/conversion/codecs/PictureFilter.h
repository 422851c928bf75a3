#pragma once

#include <string>

#include "conversion/codecs/Av.h"

namespace tavrix {

/// Processes a film's pictures between decoder and encoder: converts them to 8 bits with chroma at
/// half the resolution, and high dynamic range to the standard one.
class PictureFilter {
 public:
  /// `pictures` describes the decoder's output, `unit` is the unit of its times. Throws
  /// ConversionError for colours that would not survive.
  PictureFilter(const AVCodecParameters& pictures, AVRational unit);
  /// As above, with other filters in the syntax of FFmpeg's command line.
  PictureFilter(const AVCodecParameters& pictures, AVRational unit, const std::string& filters);

  /// Takes the frame over; nullptr at the end.
  void push(AVFrame* frame);
  /// Returns the next filtered picture in `frame`. Returns false if the filter needs another frame,
  /// or at the end.
  bool pull(AVFrame& frame);

  /// Returns size, format and colours of the filtered pictures.
  const AVCodecParameters& result() const { return *result_; }

 private:
  struct FreeParameters {
    void operator()(AVCodecParameters* p) const { avcodec_parameters_free(&p); }
  };

  av::FilterGraph graph_;
  AVFilterContext* source_ = nullptr;
  AVFilterContext* sink_ = nullptr;
  std::unique_ptr<AVCodecParameters, FreeParameters> result_;
};

/// Returns the filters from a high dynamic range to linear light in the colours of BT.709, with all
/// values below 1.
std::string toneMappingFilters(const AVCodecParameters& pictures);
/// Returns true if the colours have a high dynamic range: Hybrid Log-Gamma or Perceptual Quantizer
/// (ITU-R BT.2100).
bool isHighDynamicRange(const AVCodecParameters& pictures);
/// Returns true if every H.264 player accepts the pictures: 8 bits, chroma at half the resolution.
bool isPlainPicture(const AVCodecParameters& pictures);

}  // namespace tavrix
