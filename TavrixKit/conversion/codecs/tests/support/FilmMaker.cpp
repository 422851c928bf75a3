#include "conversion/codecs/tests/support/FilmMaker.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <stdexcept>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/display.h>
#include <libavutil/pixdesc.h>
}

namespace tavrix::testfilms {
namespace {

constexpr AVRational unit{1, 600};
constexpr int sampleRate = 44'100;

int check(int result, const char* what = __builtin_FUNCTION()) {
  if (result < 0) throw std::runtime_error{std::string{what} + ": " + std::to_string(result)};
  return result;
}

/// Y, U and V of a field, for 8 bits.
struct Colour {
  int y, u, v;
};
constexpr Colour colours[4] = {{81, 90, 200}, {145, 54, 74}, {60, 200, 110}, {180, 128, 128}};
constexpr Colour white{235, 128, 128};

void fillPlane(AVFrame& frame, int plane, bool isWhite) {
  const auto* const format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
  const int depth = format->comp[0].depth;
  const int width = plane == 0 ? frame.width : frame.width >> format->log2_chroma_w;
  const int height = plane == 0 ? frame.height : frame.height >> format->log2_chroma_h;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int field = (y * 2 / height) * 2 + x * 2 / width;
      const Colour& colour = isWhite ? white : colours[field];
      const int value = (plane == 0 ? colour.y : plane == 1 ? colour.u : colour.v) << (depth - 8);
      auto* const row = frame.data[plane] + std::ptrdiff_t{y} * frame.linesize[plane];
      if (depth == 8)
        row[x] = static_cast<std::uint8_t>(value);
      else
        reinterpret_cast<std::uint16_t*>(row)[x] = static_cast<std::uint16_t>(value);
    }
  }
}

class Maker {
 public:
  Maker(const std::string& path, const FilmRecipe& recipe) : recipe_(recipe) {
    check(avformat_alloc_output_context2(&format_, nullptr, recipe.container, path.c_str()));
    check(avio_open(&format_->pb, path.c_str(), AVIO_FLAG_WRITE));
  }
  ~Maker() {
    avio_closep(&format_->pb);
    avformat_free_context(format_);
  }
  Maker(const Maker&) = delete;
  Maker& operator=(const Maker&) = delete;

  void make() {
    addPictures();
    for (const char* const encoder : recipe_.soundEncoders) addSound(encoder);
    if (recipe_.hasPlace) {
      av_dict_set(&format_->metadata, "location", "+41.9012+012.5000/", 0);
    } else if (recipe_.hasCapture) {
      describeCapture();
    }
    av::Options options;
    options.set("movflags", recipe_.hasPlace ? "+faststart+write_colr"
                                             : "+faststart+use_metadata_tags+write_colr");
    check(avformat_write_header(format_, options.get()));
    for (std::size_t i = 0; i < recipe_.times.size(); ++i) encodePicture(i);
    encode(0, nullptr);
    for (unsigned i = 1; i < codecs_.size(); ++i) encodeSound(i);
    check(av_write_trailer(format_));
  }

 private:
  AVCodecContext& add(const char* name) {
    const AVCodec* const encoder = avcodec_find_encoder_by_name(name);
    if (encoder == nullptr) throw std::runtime_error{name};
    avformat_new_stream(format_, nullptr);
    codecs_.push_back(av::makeCodec(encoder));
    codecs_.back()->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    return *codecs_.back();
  }

  void open(AVCodecContext& codec) {
    av::Options options;
    options.set("x265-params", "log-level=none:keyint=15");
    options.set("preset", "ultrafast");
    check(avcodec_open2(&codec, codec.codec, options.get()));
    AVStream& stream = *format_->streams[codecs_.size() - 1];
    stream.time_base = codec.time_base;
    check(avcodec_parameters_from_context(stream.codecpar, &codec));
  }

  void addPictures() {
    AVCodecContext& codec = add(recipe_.encoder);
    codec.width = recipe_.width;
    codec.height = recipe_.height;
    codec.pix_fmt = recipe_.pixels;
    codec.time_base = unit;
    codec.framerate = {30, 1};
    codec.sample_aspect_ratio = recipe_.aspect;
    codec.color_trc = recipe_.transfer;
    codec.color_primaries = recipe_.primaries;
    codec.colorspace = recipe_.matrix;
    codec.color_range = AVCOL_RANGE_MPEG;
    open(codec);
    AVStream& stream = *format_->streams[0];
    stream.sample_aspect_ratio = recipe_.aspect;
    if (codec.codec_id == AV_CODEC_ID_HEVC) stream.codecpar->codec_tag = MKTAG('h', 'v', 'c', '1');
    if (recipe_.clockwise == 0) return;
    auto* const matrix = reinterpret_cast<std::int32_t*>(
        av_stream_new_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, 9 * sizeof(std::int32_t)));
    av_display_rotation_set(matrix, recipe_.clockwise);
  }

  void addSound(const char* name) {
    AVCodecContext& codec = add(name);
    codec.sample_fmt = codec.codec->sample_fmts[0];
    codec.sample_rate = sampleRate;
    codec.time_base = {1, sampleRate};
    av_channel_layout_default(&codec.ch_layout, 1);
    open(codec);
  }

  void describeCapture() {
    const std::map<const char*, const char*> tags{
        {"creation_time", "2026-05-20T09:00:00.000000Z"},
        {"com.apple.quicktime.creationdate", "2026-05-20T12:00:00+0300"},
        {"com.apple.quicktime.location.ISO6709", "+41.9012+012.5000+021.300/"},
        {"com.apple.quicktime.make", "Apple"},
        {"com.apple.quicktime.model", "iPhone 15 Pro"}};
    for (const auto& [name, value] : tags) av_dict_set(&format_->metadata, name, value, 0);
  }

  void encode(unsigned number, const AVFrame* frame) {
    AVCodecContext& codec = *codecs_[number];
    const av::Packet packet = av::makePacket();
    check(avcodec_send_frame(&codec, frame));
    while (avcodec_receive_packet(&codec, packet.get()) == 0) {
      packet->stream_index = static_cast<int>(number);
      if (number == 0) packet->duration = durationAt(packet->pts);
      av_packet_rescale_ts(packet.get(), codec.time_base, format_->streams[number]->time_base);
      check(av_interleaved_write_frame(format_, packet.get()));
    }
  }

  /// Returns the time until the next picture; for the last one the duration of the one before it.
  std::int64_t durationAt(std::int64_t time) const {
    const std::vector<std::int64_t>& times = recipe_.times;
    const auto next = std::upper_bound(times.begin(), times.end(), time);
    if (next != times.end()) return *next - time;
    return times.size() > 1 ? times.back() - *(times.end() - 2) : 20;
  }

  void encodePicture(std::size_t index) {
    const av::Frame frame = av::makeFrame();
    frame->width = recipe_.width;
    frame->height = recipe_.height;
    frame->format = recipe_.pixels;
    check(av_frame_get_buffer(frame.get(), 0));
    for (int plane = 0; plane < 3; ++plane)
      fillPlane(*frame, plane, recipe_.times[index] >= recipe_.flashAt);
    frame->pts = recipe_.times[index];
    encode(0, frame.get());
  }

  void encodeSound(unsigned number) {
    AVCodecContext& codec = *codecs_[number];
    const std::int64_t end = (recipe_.times.back() + 20) * sampleRate / unit.den;
    const std::int64_t loud = recipe_.flashAt * sampleRate / unit.den;
    const int step = codec.frame_size > 0 ? codec.frame_size : 1024;
    const av::Frame frame = av::makeFrame();
    for (std::int64_t begin = 0; begin < end; begin += step) {
      av_frame_unref(frame.get());
      frame->nb_samples = static_cast<int>(std::min<std::int64_t>(step, end - begin));
      frame->format = codec.sample_fmt;
      frame->sample_rate = sampleRate;
      av_channel_layout_default(&frame->ch_layout, 1);
      check(av_frame_get_buffer(frame.get(), 0));
      frame->pts = begin;
      for (int i = 0; i < frame->nb_samples; ++i) {
        const double tone =
            begin + i < loud ? 0 : 0.5 * std::sin(0.06 * static_cast<double>(begin + i));
        if (codec.sample_fmt == AV_SAMPLE_FMT_FLTP)
          reinterpret_cast<float*>(frame->data[0])[i] = static_cast<float>(tone);
        else
          reinterpret_cast<std::int16_t*>(frame->data[0])[i] =
              static_cast<std::int16_t>(tone * 32767);
      }
      encode(number, frame.get());
    }
    encode(number, nullptr);
  }

  const FilmRecipe& recipe_;
  AVFormatContext* format_ = nullptr;
  std::vector<av::Codec> codecs_;
};

/// Decodes a whole film with the libraries, without being strict.
class Viewer {
 public:
  explicit Viewer(const std::string& path) {
    check(avformat_open_input(&format_, path.c_str(), nullptr, nullptr));
    check(avformat_find_stream_info(format_, nullptr));
    for (unsigned i = 0; i < format_->nb_streams; ++i) {
      codecs_.push_back(av::openDecoder(*format_->streams[i], 1));
    }
  }
  ~Viewer() { avformat_close_input(&format_); }
  Viewer(const Viewer&) = delete;
  Viewer& operator=(const Viewer&) = delete;

  SeenFilm view() {
    describe();
    const av::Packet packet = av::makePacket();
    while (av_read_frame(format_, packet.get()) == 0) {
      decode(static_cast<unsigned>(packet->stream_index), packet.get());
      av_packet_unref(packet.get());
    }
    for (unsigned i = 0; i < codecs_.size(); ++i) decode(i, nullptr);
    return std::move(film_);
  }

 private:
  void describe() {
    for (unsigned i = 0; i < format_->nb_streams; ++i) {
      const AVStream& stream = *format_->streams[i];
      const AVCodecParameters& p = *stream.codecpar;
      if (p.codec_type == AVMEDIA_TYPE_AUDIO)
        film_.sounds.emplace_back(avcodec_get_name(p.codec_id));
      if (p.codec_type != AVMEDIA_TYPE_VIDEO) continue;
      film_.codec = avcodec_get_name(p.codec_id);
      film_.width = p.width;
      film_.height = p.height;
      film_.pixels = static_cast<AVPixelFormat>(p.format);
      film_.transfer = p.color_trc;
      film_.primaries = p.color_primaries;
      film_.matrix = p.color_space;
      film_.seconds = static_cast<double>(stream.duration) * av_q2d(stream.time_base);
      const auto* const matrix =
          av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr);
      if (matrix != nullptr)
        film_.clockwise = static_cast<int>(
            std::lround(av_display_rotation_get(reinterpret_cast<const std::int32_t*>(matrix))));
    }
  }

  void decode(unsigned number, const AVPacket* packet) {
    AVCodecContext& codec = *codecs_[number];
    const AVStream& stream = *format_->streams[number];
    const av::Frame frame = av::makeFrame();
    check(avcodec_send_packet(&codec, packet));
    while (avcodec_receive_frame(&codec, frame.get()) == 0) {
      const double time =
          static_cast<double>(frame->best_effort_timestamp) * av_q2d(stream.time_base);
      if (codec.codec_type == AVMEDIA_TYPE_VIDEO)
        seePicture(*frame, time);
      else if (stream.index == 1)
        hear(*frame, time);
    }
  }

  void seePicture(const AVFrame& frame, double time) {
    film_.times.push_back(time);
    const auto* const format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    const bool isDeep = format->comp[0].depth > 8;
    const auto value = [&](int plane, int field) {
      const int width = plane == 0 ? frame.width : frame.width >> format->log2_chroma_w;
      const int height = plane == 0 ? frame.height : frame.height >> format->log2_chroma_h;
      const int x = width * (field % 2 == 0 ? 1 : 3) / 4;
      const int y = height * (field < 2 ? 1 : 3) / 4;
      const auto* const row = frame.data[plane] + std::ptrdiff_t{y} * frame.linesize[plane];
      return isDeep ? reinterpret_cast<const std::uint16_t*>(row)[x] >> (format->comp[0].depth - 8)
                    : int{row[x]};
    };
    if (film_.fields.empty()) {
      for (int field = 0; field < 4; ++field)
        film_.fields.push_back({value(0, field), value(1, field), value(2, field)});
    }
    const bool isWhite = value(0, 0) > 200 && value(0, 2) > 200;
    if (isWhite && film_.flash < 0) film_.flash = time;
  }

  void hear(const AVFrame& frame, double time) {
    for (int i = 0; i < frame.nb_samples && film_.beep < 0; ++i) {
      const double value = frame.format == AV_SAMPLE_FMT_FLTP
                               ? double{reinterpret_cast<const float*>(frame.data[0])[i]}
                               : reinterpret_cast<const std::int16_t*>(frame.data[0])[i] / 32767.0;
      if (std::abs(value) > 0.3) film_.beep = time + static_cast<double>(i) / frame.sample_rate;
    }
  }

  AVFormatContext* format_ = nullptr;
  std::vector<av::Codec> codecs_;
  SeenFilm film_;
};

}  // namespace

void makeFilm(const std::string& path, const FilmRecipe& recipe) {
  av_log_set_level(AV_LOG_QUIET);
  Maker{path, recipe}.make();
}

SeenFilm seen(const std::string& path) { return Viewer{path}.view(); }

}  // namespace tavrix::testfilms
