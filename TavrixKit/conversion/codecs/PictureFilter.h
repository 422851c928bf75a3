#pragma once

#include <string>

#include "conversion/codecs/Av.h"

namespace tavrix {

/// What is between decoder and encoder of a film's pictures: 8 bits, colour at half the resolution,
/// and for a high dynamic range the standard one in its place.
class PictureFilter {
 public:
  /// `pictures` describes what the decoder gives, `unit` is the unit of its times. Throws
  /// ConversionError for colours that would not survive.
  PictureFilter(const AVCodecParameters& pictures, AVRational unit);

  /// Takes the frame over; null at the end.
  void push(AVFrame* frame);
  /// The next filtered picture; false when it takes another frame, or at the end.
  bool pull(AVFrame& frame);

  /// Of the filtered pictures: size, format and colours.
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

/// Whether the colours are of a high dynamic range: Hybrid Log-Gamma or Perceptual Quantizer,
/// ITU-R BT.2100.
bool isHighDynamicRange(const AVCodecParameters& pictures);
/// Whether the pictures are what every player of H.264 takes: 8 bits, colour at half the
/// resolution.
bool isPlainPicture(const AVCodecParameters& pictures);

}  // namespace tavrix
