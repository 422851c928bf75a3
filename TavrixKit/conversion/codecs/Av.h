#pragma once

// FFmpeg's libraries, with owners for what they allocate and with our failures.

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
}

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "transfer/ConversionFailure.h"

namespace tavrix::av {

struct Free {
  void operator()(AVFrame* frame) const { av_frame_free(&frame); }
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
  void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
  void operator()(AVFilterGraph* graph) const { avfilter_graph_free(&graph); }
};
using Frame = std::unique_ptr<AVFrame, Free>;
using Packet = std::unique_ptr<AVPacket, Free>;
using Codec = std::unique_ptr<AVCodecContext, Free>;
using FilterGraph = std::unique_ptr<AVFilterGraph, Free>;

Frame makeFrame();
Packet makePacket();
Codec makeCodec(const AVCodec* codec);

/// Gives back a result that is no failure; throws ConversionError for one that is, of the kind
/// given unless memory ran out.
int check(int result, ConversionFailure failure);
/// Whether a codec or filter wants input, or has no more output: no failure.
bool isDrained(int result);

/// Hands a decoder a packet (null at the end) and gives out what it has decoded by then, each in
/// `frame`. Throws ConversionError (damagedInput).
void decode(AVCodecContext& decoder, const AVPacket* packet, AVFrame& frame,
            const std::function<void()>& take);
/// Hands an encoder a frame (null at the end) and gives out what it has encoded by then, each in
/// `packet`. Throws ConversionError (failed).
void encode(AVCodecContext& encoder, const AVFrame* frame, AVPacket& packet,
            const std::function<void()>& take);

/// Options by name, as the libraries take them.
class Options {
 public:
  Options() = default;
  ~Options() { av_dict_free(&options_); }
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;

  void set(const char* name, const std::string& value);
  AVDictionary** get() { return &options_; }

 private:
  AVDictionary* options_ = nullptr;
};

/// Threads for one codec: those of the machine, but not more memory than a phone's films are worth.
int codecThreads();

/// A decoder for a stream, ready for its packets: no damage is concealed, and its pictures are
/// bounded. Throws ConversionError where there is none.
Codec openDecoder(const AVStream& stream, int threads);

/// The decoders that are used at all, by name and separated by commas.
const char* allowedDecoders();
/// More pixels than any phone films.
inline constexpr std::int64_t maxPixels = std::int64_t{8192} * 4608;

}  // namespace tavrix::av
