#include "conversion/codecs/Av.h"

#include <algorithm>
#include <new>
#include <thread>

#include "transfer/MediaConverter.h"

namespace tavrix::av {
namespace {

template <typename Pointer>
Pointer allocated(Pointer pointer) {
  if (!pointer) throw std::bad_alloc{};
  return pointer;
}

}  // namespace

Frame makeFrame() { return allocated(Frame{av_frame_alloc()}); }
Packet makePacket() { return allocated(Packet{av_packet_alloc()}); }
Codec makeCodec(const AVCodec* codec) { return allocated(Codec{avcodec_alloc_context3(codec)}); }

int check(int result, ConversionFailure failure) {
  if (result >= 0) return result;
  if (result == AVERROR(ENOMEM)) throw std::bad_alloc{};
  throw ConversionError{failure};
}

bool isDrained(int result) { return result == AVERROR(EAGAIN) || result == AVERROR_EOF; }

void decode(AVCodecContext& decoder, const AVPacket* packet, AVFrame& frame,
            const std::function<void()>& take) {
  check(avcodec_send_packet(&decoder, packet), ConversionFailure::damagedInput);
  for (;;) {
    const int result = avcodec_receive_frame(&decoder, &frame);
    if (isDrained(result)) return;
    check(result, ConversionFailure::damagedInput);
    take();
  }
}

void encode(AVCodecContext& encoder, const AVFrame* frame, AVPacket& packet,
            const std::function<void()>& take) {
  check(avcodec_send_frame(&encoder, frame), ConversionFailure::failed);
  for (;;) {
    const int result = avcodec_receive_packet(&encoder, &packet);
    if (isDrained(result)) return;
    check(result, ConversionFailure::failed);
    take();
  }
}

void Options::set(const char* name, const std::string& value) {
  check(av_dict_set(&options_, name, value.c_str(), 0), ConversionFailure::failed);
}

int codecThreads() {
  return static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, 8U));
}

const char* allowedDecoders() {
  return "hevc,h264,mpeg4,h263,mjpeg,prores,mpeg1video,mpeg2video,dvvideo,libdav1d,"
         "aac,alac,mp3float,mp3,mp2float,mp2,ac3,eac3,amrnb,amrwb,adpcm_ima_qt,adpcm_ima_wav,adpcm_"
         "ms,"
         "pcm_u8,pcm_s8,pcm_s16le,pcm_s16be,pcm_s24le,pcm_s24be,pcm_s32le,pcm_s32be,pcm_f32le,pcm_"
         "f32be,"
         "pcm_alaw,pcm_mulaw";
}

Codec openDecoder(const AVStream& stream, int threads) {
  const AVCodec* const decoder = avcodec_find_decoder(stream.codecpar->codec_id);
  if (decoder == nullptr) throw ConversionError{ConversionFailure::unsupported};
  Codec codec = makeCodec(decoder);
  check(avcodec_parameters_to_context(codec.get(), stream.codecpar),
        ConversionFailure::damagedInput);
  codec->pkt_timebase = stream.time_base;
  codec->thread_count = threads;
  codec->max_pixels = maxPixels;
  codec->err_recognition |= AV_EF_EXPLODE;
  Options options;
  options.set("codec_whitelist", allowedDecoders());
  check(avcodec_open2(codec.get(), decoder, options.get()), ConversionFailure::unsupported);
  return codec;
}

}  // namespace tavrix::av
