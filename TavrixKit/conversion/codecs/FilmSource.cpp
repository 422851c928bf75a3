#include "conversion/codecs/FilmSource.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <string_view>

#include "transfer/MediaConverter.h"

extern "C" {
#include <libavutil/display.h>
}

namespace tavrix {
namespace {

using av::check;

/// One dictionary per stream, as avformat_find_stream_info() requires.
class StreamOptions {
 public:
  explicit StreamOptions(unsigned count) : options_(count) {
    for (AVDictionary*& options : options_) {
      av_dict_set_int(&options, "max_pixels", av::maxPixels, 0);
    }
  }
  ~StreamOptions() {
    for (AVDictionary*& options : options_) av_dict_free(&options);
  }
  StreamOptions(const StreamOptions&) = delete;
  StreamOptions& operator=(const StreamOptions&) = delete;
  AVDictionary** get() { return options_.data(); }

 private:
  std::vector<AVDictionary*> options_;
};

double inSeconds(std::int64_t time, AVRational unit) {
  return static_cast<double>(time) * av_q2d(unit);
}

}  // namespace

FilmSource::FilmSource(int descriptor) : bytes_(descriptor, av::ByteStream::Purpose::reading) {
  open(false);
}

FilmSource::FilmSource(std::span<const char> bytes) : bytes_(bytes) { open(true); }

void FilmSource::open(bool isForPictures) {
  try {
    openFormat();
    // Probing decodes pictures, which would take longer than to decode the wanted one.
    const bool isProbed = !isForPictures || !describesPictures();
    if (isProbed) probeStreams();
    choosePicture();
    if (isProbed) requireFormat();
    if (!isForPictures) chooseSounds();
    requireBounds();
  } catch (...) {
    avformat_close_input(&format_);
    throw;
  }
}

FilmSource::~FilmSource() { avformat_close_input(&format_); }

void FilmSource::openFormat() {
  format_ = avformat_alloc_context();
  if (format_ == nullptr) throw std::bad_alloc{};
  format_->pb = bytes_.get();
  format_->flags |= AVFMT_FLAG_CUSTOM_IO;
  format_->max_streams = FilmBounds::streams;
  av::Options options;
  options.set("format_whitelist", "mov,avi,mpeg,mpegts");
  options.set("protocol_whitelist", "none");
  options.set("codec_whitelist", av::allowedDecoders());
  const int result = avformat_open_input(&format_, nullptr, nullptr, options.get());
  bytes_.requireNoError();
  check(result, ConversionFailure::damagedInput);
  // A stream that appears only during reading would have no options.
  if (format_->nb_streams == 0) throw ConversionError{ConversionFailure::damagedInput};
}

/// Returns true if the header has all that a decoder of its pictures must know before the first
/// one.
bool FilmSource::describesPictures() const {
  const int number = av_find_best_stream(format_, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  if (number < 0) return false;
  const AVCodecID codec = format_->streams[number]->codecpar->codec_id;
  return codec == AV_CODEC_ID_H264 || codec == AV_CODEC_ID_HEVC;
}

void FilmSource::probeStreams() {
  StreamOptions streams{format_->nb_streams};
  check(avformat_find_stream_info(format_, streams.get()), ConversionFailure::damagedInput);
}

void FilmSource::choosePicture() {
  const int number = av_find_best_stream(format_, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  if (number < 0) throw ConversionError{ConversionFailure::unsupported};
  for (unsigned i = 0; i < format_->nb_streams; ++i) format_->streams[i]->discard = AVDISCARD_ALL;
  picture_ = format_->streams[number];
  picture_->discard = AVDISCARD_DEFAULT;
  const bool isCover = (picture_->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
  if (isCover || picture_->codecpar->codec_id == AV_CODEC_ID_NONE)
    throw ConversionError{ConversionFailure::unsupported};
}

void FilmSource::requireFormat() const {
  if (picture_->codecpar->format == AV_PIX_FMT_NONE)
    throw ConversionError{ConversionFailure::damagedInput};
}

void FilmSource::chooseSounds() {
  bool hasSound = false;
  for (unsigned i = 0; i < format_->nb_streams; ++i) {
    AVStream* const stream = format_->streams[i];
    if (stream->codecpar->codec_type != AVMEDIA_TYPE_AUDIO) continue;
    hasSound = true;
    if (avcodec_find_decoder(stream->codecpar->codec_id) == nullptr) continue;
    stream->discard = AVDISCARD_DEFAULT;
    sounds_.push_back(stream);
  }
  // A phone may store the same sound beside a stereo track in a format of its own.
  if (hasSound && sounds_.empty()) throw ConversionError{ConversionFailure::unsupported};
}

void FilmSource::requireBounds() const {
  const AVCodecParameters& picture = *picture_->codecpar;
  const auto frames = std::max<std::int64_t>(picture_->nb_frames, indexedPictures());
  const double limit = std::chrono::duration<double>{FilmBounds::duration}.count();
  if (sounds_.size() > FilmBounds::sounds || frames > FilmBounds::pictures ||
      seconds().value_or(0) > limit || picture.width > av::maxPixels ||
      picture.height > av::maxPixels ||
      std::int64_t{picture.width} * picture.height > av::maxPixels)
    throw ConversionError{ConversionFailure::tooLarge};
  if (picture.width <= 0 || picture.height <= 0)
    throw ConversionError{ConversionFailure::damagedInput};
  if (static_cast<double>(frames) > (limitedSeconds() + 1) * FilmBounds::picturesASecond)
    throw ConversionError{ConversionFailure::tooLarge};
  requireDistinctBytes();
}

double FilmSource::limitedSeconds() const {
  return seconds().value_or(std::chrono::duration<double>{FilmBounds::duration}.count());
}

void FilmSource::requireDistinctBytes() const {
  const std::int64_t available = bytes_.size();
  // Where an edited film begins in the middle, earlier pictures are listed again, not to be shown.
  std::int64_t shown = 0;
  std::int64_t hidden = 0;
  for (unsigned number = 0; number < format_->nb_streams; ++number) {
    AVStream* const stream = format_->streams[number];
    const int count = avformat_index_get_entries_count(stream);
    for (int i = 0; i < count; ++i) {
      const AVIndexEntry& entry = *avformat_index_get_entry(stream, i);
      ((entry.flags & AVINDEX_DISCARD_FRAME) != 0 ? hidden : shown) += entry.size;
    }
  }
  if (available >= 0 && std::max(shown, hidden) > available)
    throw ConversionError{ConversionFailure::damagedInput};
}

bool FilmSource::next(AVPacket& packet) {
  const int result = av_read_frame(format_, &packet);
  bytes_.requireNoError();
  if (result == AVERROR_EOF) {
    requireComplete();
    return false;
  }
  check(result, ConversionFailure::damagedInput);
  if ((packet.flags & AV_PKT_FLAG_CORRUPT) != 0)
    throw ConversionError{ConversionFailure::damagedInput};
  if (packet.stream_index == picture_->index && ++picturesRead_ > FilmBounds::pictures)
    throw ConversionError{ConversionFailure::tooLarge};
  return true;
}

void FilmSource::requireComplete() const {
  if (hasJumped_) return;
  const bool isShort = isIsoFile() && picturesRead_ < indexedPictures();
  if (picturesRead_ == 0 || isShort) throw ConversionError{ConversionFailure::damagedInput};
}

void FilmSource::seek(std::int64_t time) {
  hasJumped_ = true;
  check(av_seek_frame(format_, picture_->index, time, AVSEEK_FLAG_BACKWARD),
        ConversionFailure::damagedInput);
}

std::optional<double> FilmSource::seconds() const {
  if (picture_->duration > 0) return inSeconds(picture_->duration, picture_->time_base);
  if (format_->duration > 0) return inSeconds(format_->duration, AVRational{1, AV_TIME_BASE});
  return std::nullopt;
}

std::int64_t FilmSource::indexedPictures() const {
  return avformat_index_get_entries_count(picture_);
}

bool FilmSource::showsAllPictures() const {
  const auto count = avformat_index_get_entries_count(picture_);
  for (int i = 0; i < count; ++i) {
    if ((avformat_index_get_entry(picture_, i)->flags & AVINDEX_DISCARD_FRAME) != 0) return false;
  }
  return true;
}

bool FilmSource::isIsoFile() const {
  return std::string_view{format_->iformat->name}.starts_with("mov,");
}

std::optional<DisplayMatrix> FilmSource::displayMatrix() const {
  std::size_t bytes = 0;
  const auto* const data = av_stream_get_side_data(picture_, AV_PKT_DATA_DISPLAYMATRIX, &bytes);
  DisplayMatrix matrix{};
  if (data == nullptr || bytes != sizeof(matrix)) return std::nullopt;
  std::copy_n(reinterpret_cast<const std::int32_t*>(data), matrix.size(), matrix.begin());
  return matrix;
}

std::optional<std::string> FilmSource::tag(const char* name) const {
  const AVDictionaryEntry* const entry = av_dict_get(format_->metadata, name, nullptr, 0);
  if (entry == nullptr) return std::nullopt;
  return entry->value;
}

namespace {

ShownSize turned(const FilmSource& film, const ShownSize& size) {
  const auto matrix = film.displayMatrix();
  if (!matrix) return size;
  const double angle = std::abs(av_display_rotation_get(matrix->data()));
  const bool isTurned = angle > 45 && angle < 135;
  return isTurned ? ShownSize{size.height, size.width} : size;
}

}  // namespace

ShownSize shownSize(const FilmSource& film) {
  const AVCodecParameters& picture = *film.picture().codecpar;
  return turned(film, {static_cast<std::uint32_t>(picture.width),
                       static_cast<std::uint32_t>(picture.height)});
}

ShownSize squareSize(const FilmSource& film) {
  const AVCodecParameters& picture = *film.picture().codecpar;
  const AVRational aspect = picture.sample_aspect_ratio;
  std::int64_t width = picture.width;
  // The header has a fixed-point number with 16 bits of fraction, of which readers use the whole
  // part.
  if (aspect.num > 0 && aspect.den > 0)
    width = av_rescale(aspect.num, width << 16U, aspect.den) >> 16U;
  return turned(film,
                {static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(picture.height)});
}

}  // namespace tavrix
