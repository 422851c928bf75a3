#include "conversion/codecs/HevcDecoder.h"

#include <algorithm>

#include "conversion/codecs/DecodedStill.h"
#include "device/metadata/Bytes.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

/// Bytes that no picture has at the marked positions.
constexpr std::uint8_t unwritten[8] = {0x9E, 0x37, 0x79, 0xB9, 0x7F, 0x4A, 0x7C, 0x15};
/// The side of the largest independently coded block; a truncated stream leaves out some of them.
constexpr int cell = 64;

/// Returns true if a unit has bytes that no unit may have (ITU-T H.265, 7.4.2), for example after
/// the loss of a sector. Zeros that pad it to a multiple of four are allowed.
bool isBroken(std::string_view unit) {
  constexpr std::string_view twoZeros{"\0\0", 2};
  const std::size_t last = unit.find_last_not_of('\0');
  if (last == std::string_view::npos || unit.size() - last > 4) return true;
  unit = unit.substr(0, last + 1);
  for (std::size_t at = 0; (at = unit.find(twoZeros, at)) != std::string_view::npos; ++at) {
    if (unit[at + 2] >= 0 && unit[at + 2] <= 2) return true;
  }
  return false;
}

}  // namespace

HevcDecoder::HevcDecoder()
    : packet_(av::makePacket()), frame_(av::makeFrame()), received_(av::makeFrame()) {
  const AVCodec* const hevc = avcodec_find_decoder(AV_CODEC_ID_HEVC);
  if (hevc == nullptr) throw ConversionError{ConversionFailure::unsupported};
  decoder_ = av::makeCodec(hevc);
  // Several files are converted at once instead.
  decoder_->thread_count = 1;
  decoder_->thread_type = FF_THREAD_SLICE;
  decoder_->max_pixels = StillLimits::maxPixels;
  decoder_->err_recognition |= AV_EF_EXPLODE | AV_EF_CRCCHECK;
  decoder_->opaque = this;
  decoder_->get_buffer2 = makeBuffer;
  av::check(avcodec_open2(decoder_.get(), hevc, nullptr), ConversionFailure::unsupported);
}

int HevcDecoder::makeBuffer(AVCodecContext* decoder, AVFrame* frame, int flags) {
  const int result = avcodec_default_get_buffer2(decoder, frame, flags);
  if (result >= 0) static_cast<HevcDecoder*>(decoder->opaque)->mark(*frame);
  return result;
}

/// Puts one mark into each cell, away from its edges, which filters reach, and one into the last
/// corner.
void HevcDecoder::mark(const AVFrame& frame) {
  constexpr int size = sizeof unwritten;
  const auto markAt = [&](int x, int y) {
    std::uint8_t* const place = frame.data[0] + std::ptrdiff_t{frame.linesize[0]} * y + x;
    std::copy_n(unwritten, size, place);
    marks_.push_back(place);
  };
  if (frame.width < size) return;
  for (int y = cell / 2; y < frame.height; y += cell) {
    for (int x = cell / 2; x + size <= frame.width; x += cell) markAt(x, y);
  }
  markAt(frame.width - size, frame.height - 1);
}

bool HevcDecoder::isWhole() const {
  const AVBufferRef& buffer = *frame_->buf[0];
  return std::none_of(marks_.begin(), marks_.end(), [&](const std::uint8_t* place) {
    const bool isOfPicture = place >= buffer.data && place < buffer.data + buffer.size;
    return isOfPicture && std::equal(std::begin(unwritten), std::end(unwritten), place);
  });
}

/// Writes each unit after a start code, the form that the decoder accepts without a configuration.
void HevcDecoder::append(std::string_view units) {
  constexpr std::string_view startCode{"\0\0\0\1", 4};
  for (ByteCursor cursor{units}; !cursor.isAtEnd();) {
    const auto length = static_cast<std::size_t>(cursor.number(4));
    const std::string_view unit = cursor.take(length);
    if (cursor.hasFailed() || isBroken(unit))
      throw ConversionError{ConversionFailure::damagedInput};
    stream_.append(startCode).append(unit);
  }
}

const AVFrame& HevcDecoder::decode(std::string_view parameterSets, std::string_view picture) {
  stream_.clear();
  append(parameterSets);
  append(picture);
  const std::size_t size = stream_.size();
  stream_.append(AV_INPUT_BUFFER_PADDING_SIZE, '\0');
  packet_->data = reinterpret_cast<std::uint8_t*>(stream_.data());
  packet_->size = static_cast<int>(size);
  int count = 0;
  const auto take = [&] {
    const bool isBroken =
        (received_->flags & AV_FRAME_FLAG_CORRUPT) != 0 || received_->decode_error_flags != 0;
    if (isBroken || ++count > 1) throw ConversionError{ConversionFailure::damagedInput};
    av_frame_unref(frame_.get());
    av_frame_move_ref(frame_.get(), received_.get());
  };
  marks_.clear();
  avcodec_flush_buffers(decoder_.get());
  av::decode(*decoder_, packet_.get(), *received_, take);
  av::decode(*decoder_, nullptr, *received_, take);
  if (count != 1 || !isWhole()) throw ConversionError{ConversionFailure::damagedInput};
  return *frame_;
}

}  // namespace tavrix
