#include "conversion/codecs/FilmTrack.h"

namespace tavrix {
namespace {

class CopiedTrack : public FilmTrack {
 public:
  CopiedTrack(const AVStream& source, FilmWriter& writer)
      : source_(source), writer_(writer), target_(writer.addStream(source)) {
    av::check(avcodec_parameters_copy(target_.codecpar, source.codecpar),
              ConversionFailure::failed);
    // The codec tag can differ between file formats.
    target_.codecpar->codec_tag = 0;
    target_.avg_frame_rate = source.avg_frame_rate;
    target_.sample_aspect_ratio = source.sample_aspect_ratio;
  }

  void take(AVPacket& packet) override {
    ++written_;
    writer_.write(packet, target_, source_.time_base);
  }

 private:
  const AVStream& source_;
  FilmWriter& writer_;
  AVStream& target_;
};

}  // namespace

std::unique_ptr<FilmTrack> copiedTrack(const AVStream& source, FilmWriter& writer) {
  return std::make_unique<CopiedTrack>(source, writer);
}

}  // namespace tavrix
