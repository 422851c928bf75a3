#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>

#include "conversion/codecs/FilmTrack.h"
#include "conversion/codecs/PictureFilter.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

using av::check;

double pictureRate(const AVStream& stream) {
  constexpr double usual = 30;
  const double rate = av_q2d(stream.avg_frame_rate.den > 0 ? stream.avg_frame_rate : AVRational{});
  return std::isfinite(rate) && rate > 0 ? std::min(rate, 1000.0) : usual;
}

void describe(AVCodecContext& encoder, const AVCodecParameters& pictures) {
  encoder.width = pictures.width;
  encoder.height = pictures.height;
  encoder.pix_fmt = static_cast<AVPixelFormat>(pictures.format);
  encoder.sample_aspect_ratio = pictures.sample_aspect_ratio;
  encoder.color_primaries = pictures.color_primaries;
  encoder.color_trc = pictures.color_trc;
  encoder.colorspace = pictures.color_space;
  encoder.color_range = pictures.color_range;
  encoder.chroma_sample_location = pictures.chroma_location;
}

av::Codec openEncoder(const AVCodecParameters& pictures, const AVStream& source) {
  const AVCodec* const h264 = avcodec_find_encoder_by_name("libx264");
  if (h264 == nullptr) throw ConversionError{ConversionFailure::failed};
  av::Codec encoder = av::makeCodec(h264);
  describe(*encoder, pictures);
  encoder->time_base = source.time_base;
  encoder->framerate = av_d2q(pictureRate(source), 100'000);
  encoder->gop_size =
      static_cast<int>(std::ceil(pictureRate(source) * PictureQuality::secondsBetweenKeys));
  encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  // The default of x264.
  encoder->thread_count = av::codecThreads() * 3 / 2;
  av::Options options;
  options.set("preset", PictureQuality::preset);
  options.set("crf", PictureQuality::rateFactor);
  options.set("profile", "high");
  check(avcodec_open2(encoder.get(), h264, options.get()), ConversionFailure::unsupported);
  return encoder;
}

class EncodedPictures : public FilmTrack {
 public:
  EncodedPictures(const AVStream& source, FilmWriter& writer)
      : source_(source),
        writer_(writer),
        target_(writer.addStream(source)),
        filter_(*source.codecpar, source.time_base),
        // One more than there are processors: one of the threads always waits for another's
        // picture.
        decoder_(av::openDecoder(source, av::codecThreads() + 1)),
        encoder_(openEncoder(filter_.result(), source)),
        frame_(av::makeFrame()),
        packet_(av::makePacket()) {
    check(avcodec_parameters_from_context(target_.codecpar, encoder_.get()),
          ConversionFailure::failed);
    target_.avg_frame_rate = source.avg_frame_rate;
    target_.sample_aspect_ratio = encoder_->sample_aspect_ratio;
  }

  void take(AVPacket& packet) override { decode(&packet); }

  void finish() override {
    decode(nullptr);
    if (lastTime_) durations_[*lastTime_] = lastDuration();
    filter_.push(nullptr);
    encodeFiltered();
    encode(nullptr);
    if (!durations_.empty() || written_ == 0) throw ConversionError{ConversionFailure::failed};
  }

 private:
  void decode(const AVPacket* packet) {
    av::decode(*decoder_, packet, *frame_, [this] {
      requireUsable(*frame_);
      prepare(*frame_);
      filter_.push(frame_.get());
      encodeFiltered();
    });
  }

  void requireUsable(const AVFrame& frame) {
    const AVCodecParameters& expected = *source_.codecpar;
    const bool isBroken =
        (frame.flags & AV_FRAME_FLAG_CORRUPT) != 0 || frame.decode_error_flags != 0;
    const bool isOther = frame.width != expected.width || frame.height != expected.height ||
                         frame.format != expected.format;
    const std::int64_t time = frame.best_effort_timestamp;
    if (isBroken || isOther || time == AV_NOPTS_VALUE || (lastTime_ && time <= *lastTime_))
      throw ConversionError{ConversionFailure::damagedInput};
    if (lastTime_) durations_[*lastTime_] = time - *lastTime_;
    if (!firstTime_) firstTime_ = time;
    lastTime_ = time;
  }

  /// Returns the rest of the duration in the header, or else the usual duration of a picture.
  std::int64_t lastDuration() const {
    const std::int64_t rest = *firstTime_ + source_.duration - *lastTime_;
    if (source_.duration != AV_NOPTS_VALUE && rest > 0) return rest;
    const double usual = 1 / (pictureRate(source_) * av_q2d(source_.time_base));
    return std::max<std::int64_t>(1, std::llround(usual));
  }

  /// Sets the colours that the film's header declares, regardless of the single picture.
  void prepare(AVFrame& frame) {
    const AVCodecParameters& pictures = *source_.codecpar;
    frame.pts = frame.best_effort_timestamp;
    frame.color_primaries = pictures.color_primaries;
    frame.color_trc = pictures.color_trc;
    frame.colorspace = pictures.color_space;
    frame.color_range = pictures.color_range;
  }

  void encodeFiltered() {
    while (filter_.pull(*frame_)) {
      frame_->pict_type = AV_PICTURE_TYPE_NONE;
      encode(frame_.get());
      av_frame_unref(frame_.get());
    }
  }

  void encode(const AVFrame* frame) {
    av::encode(*encoder_, frame, *packet_, [this] {
      const auto duration = durations_.extract(packet_->pts);
      packet_->duration = duration.empty() ? 0 : duration.mapped();
      ++written_;
      writer_.write(*packet_, target_, encoder_->time_base);
    });
  }

  const AVStream& source_;
  FilmWriter& writer_;
  AVStream& target_;
  PictureFilter filter_;
  av::Codec decoder_;
  av::Codec encoder_;
  av::Frame frame_;
  av::Packet packet_;
  std::map<std::int64_t, std::int64_t> durations_;  ///< by time, of the pictures in the encoder
  std::optional<std::int64_t> firstTime_;
  std::optional<std::int64_t> lastTime_;
};

}  // namespace

std::unique_ptr<FilmTrack> encodedPictures(const AVStream& source, FilmWriter& writer) {
  return std::make_unique<EncodedPictures>(source, writer);
}

}  // namespace tavrix
