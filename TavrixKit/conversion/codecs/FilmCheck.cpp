#include "conversion/codecs/FilmCheck.h"

#include <algorithm>
#include <cmath>

#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

void require(bool isRight) {
  if (!isRight) throw ConversionError{ConversionFailure::wrongResult};
}

/// Decodes pictures from the film's current position: the first one or all. Returns the time of the
/// last.
class Trial {
 public:
  explicit Trial(FilmSource& film)
      : film_(film),
        decoder_(av::openDecoder(film.picture(), av::codecThreads())),
        packet_(av::makePacket()),
        frame_(av::makeFrame()) {}

  std::int64_t firstPicture() {
    while (!lastTime_ && feed()) {
    }
    require(lastTime_.has_value());
    return *lastTime_;
  }

  std::int64_t lastPicture() {
    while (feed()) {
    }
    require(lastTime_.has_value());
    return *lastTime_;
  }

 private:
  /// Returns false at the end.
  bool feed() {
    const bool isOpen = film_.next(*packet_);
    if (isOpen && packet_->stream_index != film_.picture().index) {
      av_packet_unref(packet_.get());
      return true;
    }
    av::check(avcodec_send_packet(decoder_.get(), isOpen ? packet_.get() : nullptr),
              ConversionFailure::wrongResult);
    av_packet_unref(packet_.get());
    for (;;) {
      const int result = avcodec_receive_frame(decoder_.get(), frame_.get());
      if (av::isDrained(result)) return isOpen;
      av::check(result, ConversionFailure::wrongResult);
      require((frame_->flags & AV_FRAME_FLAG_CORRUPT) == 0 && frame_->decode_error_flags == 0);
      lastTime_ = std::max(lastTime_.value_or(INT64_MIN), frame_->best_effort_timestamp);
    }
  }

  FilmSource& film_;
  av::Codec decoder_;
  av::Packet packet_;
  av::Frame frame_;
  std::optional<std::int64_t> lastTime_;
};

void requireHeader(const FilmSource& film, const ExpectedFilm& expected) {
  require(film.picture().codecpar->codec_id == AV_CODEC_ID_H264);
  require(shownSize(film) == expected.size && film.displayMatrix() == expected.matrix);
  require(film.indexedPictures() == expected.pictures);
  require(film.sounds().size() == expected.sounds);
  require(std::abs(film.seconds().value_or(0) - expected.seconds) <= durationTolerance);
  for (const AVStream* const sound : film.sounds()) {
    require(sound->codecpar->codec_id == AV_CODEC_ID_AAC && sound->nb_frames > 0);
  }
}

void requirePictures(FilmSource& film) {
  const AVStream& stream = film.picture();
  const double unit = av_q2d(stream.time_base);
  const std::int64_t first = Trial{film}.firstPicture();
  film.seek(first + stream.duration);
  const std::int64_t last = Trial{film}.lastPicture();
  const double end = static_cast<double>(last - first) * unit;
  const double lastPictureSeconds = 1.0;  // a slow picture may be shown that long
  require(end >= film.seconds().value_or(0) - lastPictureSeconds);
}

}  // namespace

void requireFilm(int descriptor, const ExpectedFilm& expected) {
  try {
    FilmSource film{descriptor};
    requireHeader(film, expected);
    requirePictures(film);
  } catch (const ConversionError&) {
    // Any error here is one of the converted film and not of the source.
    throw ConversionError{ConversionFailure::wrongResult};
  }
}

}  // namespace tavrix
