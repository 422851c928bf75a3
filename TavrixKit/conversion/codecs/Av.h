#pragma once

// FFmpeg's libraries, with owners for their allocations and with this program's errors.

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

/// Returns the result if it is no error. Otherwise throws std::bad_alloc if memory ran out, and
/// ConversionError of the given kind for all other errors.
int check(int result, ConversionFailure failure);
/// Returns true if a codec or filter needs more input or has no more output, which is no error.
bool isDrained(int result);

/// Passes a packet to the decoder (nullptr at the end) and calls `take` for each picture or sound
/// frame decoded so far, with the data in `frame`. Throws ConversionError (damagedInput).
void decode(AVCodecContext& decoder, const AVPacket* packet, AVFrame& frame,
            const std::function<void()>& take);
/// Passes a frame to the encoder (nullptr at the end) and calls `take` for each packet encoded so
/// far, with the data in `packet`. Throws ConversionError (failed).
void encode(AVCodecContext& encoder, const AVFrame* frame, AVPacket& packet,
            const std::function<void()>& take);

/// Options by name, in the form of the libraries.
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

/// Returns the number of threads for one codec: those of the machine, bounded by the memory that a
/// phone's films justify.
int codecThreads();

/// Opens a decoder for a stream, ready for its packets. It conceals no damage, and the size of its
/// pictures is limited. Throws ConversionError if there is none.
Codec openDecoder(const AVStream& stream, int threads);

/// Returns the names of all allowed decoders, separated by commas.
const char* allowedDecoders();
/// More pixels than any phone films.
inline constexpr std::int64_t maxPixels = std::int64_t{8192} * 4608;

}  // namespace tavrix::av
