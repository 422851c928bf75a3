#include <fmt/format.h>

#include <array>
#include <new>

#include "conversion/codecs/FilmTrack.h"
#include "transfer/MediaConverter.h"

extern "C" {
#include <libavutil/channel_layout.h>
}

namespace tavrix {
namespace {

using av::check;
using av::isDrained;

std::string nameOf(const AVChannelLayout& layout) {
  std::array<char, 128> name{};
  check(av_channel_layout_describe(&layout, name.data(), name.size()),
        ConversionFailure::unsupported);
  return name.data();
}

/// The filter between decoder and encoder: converts to floating point, one or two channels or 5.1,
/// and a sample rate of AAC, in portions of the encoder's frame size.
class SoundFilter {
 public:
  SoundFilter(const AVCodecContext& decoder, AVRational unit) : graph_(avfilter_graph_alloc()) {
    if (!graph_) throw std::bad_alloc{};
    AVChannelLayout layout = decoder.ch_layout;
    if (layout.order == AV_CHANNEL_ORDER_UNSPEC)
      av_channel_layout_default(&layout, decoder.ch_layout.nb_channels);
    const std::string source = fmt::format(
        "time_base={}/{}:sample_rate={}:sample_fmt={}:channel_layout={}", unit.num, unit.den,
        decoder.sample_rate, static_cast<int>(decoder.sample_fmt), nameOf(layout));
    const char* const channels = layout.nb_channels == 1   ? "mono"
                                 : layout.nb_channels == 6 ? "5.1"
                                                           : "stereo";
    const std::string format = fmt::format(
        "sample_fmts=fltp:channel_layouts={}:sample_rates=48000|44100|32000|24000|22050|16000|"
        "12000|11025|8000",
        channels);
    AVFilterContext* middle = nullptr;
    make(source_, "abuffer", source);
    make(middle, "aformat", format);
    make(sink_, "abuffersink", {});
    check(avfilter_link(source_, 0, middle, 0), ConversionFailure::unsupported);
    check(avfilter_link(middle, 0, sink_, 0), ConversionFailure::unsupported);
    check(avfilter_graph_config(graph_.get(), nullptr), ConversionFailure::unsupported);
  }

  AVFilterContext* source() const { return source_; }
  AVFilterContext* sink() const { return sink_; }

 private:
  void make(AVFilterContext*& filter, const char* name, const std::string& options) {
    check(avfilter_graph_create_filter(&filter, avfilter_get_by_name(name), nullptr,
                                       options.c_str(), nullptr, graph_.get()),
          ConversionFailure::unsupported);
  }

  av::FilterGraph graph_;
  AVFilterContext* source_ = nullptr;
  AVFilterContext* sink_ = nullptr;
};

av::Codec openEncoder(const SoundFilter& filter) {
  const AVCodec* const aac = avcodec_find_encoder(AV_CODEC_ID_AAC);
  if (aac == nullptr) throw ConversionError{ConversionFailure::failed};
  av::Codec encoder = av::makeCodec(aac);
  encoder->sample_fmt = AV_SAMPLE_FMT_FLTP;
  encoder->sample_rate = av_buffersink_get_sample_rate(filter.sink());
  check(av_buffersink_get_ch_layout(filter.sink(), &encoder->ch_layout), ConversionFailure::failed);
  encoder->time_base = {1, encoder->sample_rate};
  constexpr std::int64_t bitsOfChannel = 96'000;
  encoder->bit_rate = bitsOfChannel * encoder->ch_layout.nb_channels;
  encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  check(avcodec_open2(encoder.get(), aac, nullptr), ConversionFailure::unsupported);
  av_buffersink_set_frame_size(filter.sink(), static_cast<unsigned>(encoder->frame_size));
  return encoder;
}

class EncodedSounds : public FilmTrack {
 public:
  EncodedSounds(const AVStream& source, FilmWriter& writer)
      : writer_(writer),
        target_(writer.addStream(source)),
        decoder_(av::openDecoder(source, 1)),
        filter_(*decoder_, source.time_base),
        encoder_(openEncoder(filter_)),
        frame_(av::makeFrame()),
        packet_(av::makePacket()) {
    target_.time_base = encoder_->time_base;
    check(avcodec_parameters_from_context(target_.codecpar, encoder_.get()),
          ConversionFailure::failed);
  }

  void take(AVPacket& packet) override { decode(&packet); }

  void finish() override {
    decode(nullptr);
    check(av_buffersrc_add_frame(filter_.source(), nullptr), ConversionFailure::failed);
    encodeFiltered();
    encode(nullptr);
  }

 private:
  void decode(const AVPacket* packet) {
    av::decode(*decoder_, packet, *frame_, [this] {
      frame_->pts = frame_->best_effort_timestamp;
      check(av_buffersrc_add_frame(filter_.source(), frame_.get()),
            ConversionFailure::damagedInput);
      encodeFiltered();
    });
  }

  void encodeFiltered() {
    for (;;) {
      const int result = av_buffersink_get_frame(filter_.sink(), frame_.get());
      if (isDrained(result)) return;
      check(result, ConversionFailure::failed);
      frame_->pts = av_rescale_q(frame_->pts, av_buffersink_get_time_base(filter_.sink()),
                                 encoder_->time_base);
      encode(frame_.get());
      av_frame_unref(frame_.get());
    }
  }

  void encode(const AVFrame* frame) {
    av::encode(*encoder_, frame, *packet_, [this] {
      ++written_;
      writer_.write(*packet_, target_, encoder_->time_base);
    });
  }

  FilmWriter& writer_;
  AVStream& target_;
  av::Codec decoder_;
  SoundFilter filter_;
  av::Codec encoder_;
  av::Frame frame_;
  av::Packet packet_;
};

}  // namespace

std::unique_ptr<FilmTrack> encodedSounds(const AVStream& source, FilmWriter& writer) {
  return std::make_unique<EncodedSounds>(source, writer);
}

}  // namespace tavrix
