#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "conversion/codecs/Av.h"

namespace tavrix {

/// Decodes independently coded HEVC pictures (ITU-T H.265), one after another. Conceals no damage
/// that shows in the stream and omits no part of a picture.
class HevcDecoder {
 public:
  HevcDecoder();
  HevcDecoder(const HevcDecoder&) = delete;
  HevcDecoder& operator=(const HevcDecoder&) = delete;

  /// Both arguments have units, each after its length in four bytes: the parameter sets, and the
  /// picture. Returns the picture, which stays valid until the next call. Throws ConversionError
  /// (damagedInput) unless there is exactly one.
  const AVFrame& decode(std::string_view parameterSets, std::string_view picture);

 private:
  static int makeBuffer(AVCodecContext* decoder, AVFrame* frame, int flags);

  void append(std::string_view units);
  void mark(const AVFrame& frame);
  bool isWhole() const;

  av::Codec decoder_;
  av::Packet packet_;
  av::Frame frame_;
  av::Frame received_;
  std::string stream_;
  /// Positions in the current picture that have a mark until something is decoded there.
  std::vector<std::uint8_t*> marks_;
};

}  // namespace tavrix
