#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "conversion/codecs/Av.h"

namespace tavrix {

/// Decodes pictures of HEVC (ITU-T H.265) each of which is coded for itself, one after another. No
/// damage that shows in the stream is concealed, and no part of a picture left out.
class HevcDecoder {
 public:
  HevcDecoder();
  HevcDecoder(const HevcDecoder&) = delete;
  HevcDecoder& operator=(const HevcDecoder&) = delete;

  /// Both texts hold units, each behind its length in four bytes: the parameter sets, and the
  /// picture. Gives the picture, which stays until the next call. Throws ConversionError
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
  /// Where the picture that is being decoded bears a mark as long as nothing is decoded there.
  std::vector<std::uint8_t*> marks_;
};

}  // namespace tavrix
