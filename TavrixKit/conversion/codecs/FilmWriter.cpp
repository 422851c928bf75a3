#include "conversion/codecs/FilmWriter.h"

#include <algorithm>

#include "foundation/files/FileError.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

void copyTag(AVDictionary*& to, const AVDictionary* from, const char* name) {
  const AVDictionaryEntry* const entry = av_dict_get(from, name, nullptr, 0);
  if (entry != nullptr) av_dict_set(&to, name, entry->value, 0);
}

}  // namespace

FilmWriter::FilmWriter(int descriptor) : bytes_(descriptor, av::ByteStream::Purpose::writing) {
  av::check(avformat_alloc_output_context2(&format_, nullptr, "mp4", nullptr),
            ConversionFailure::failed);
  format_->pb = bytes_.get();
  // Leaves out the name and version of the writing program, so that the same film gives the same
  // bytes.
  format_->flags |= AVFMT_FLAG_CUSTOM_IO | AVFMT_FLAG_BITEXACT;
}

FilmWriter::~FilmWriter() { avformat_free_context(format_); }

AVStream& FilmWriter::addStream(const AVStream& source) {
  AVStream* const stream = avformat_new_stream(format_, nullptr);
  if (stream == nullptr) throw std::bad_alloc{};
  stream->time_base = source.time_base;
  stream->disposition = source.disposition;
  for (const char* const name : {"creation_time", "language", "handler_name"}) {
    copyTag(stream->metadata, source.metadata, name);
  }
  return *stream;
}

void FilmWriter::setDisplayMatrix(AVStream& stream, const DisplayMatrix& matrix) {
  auto* const data = av_stream_new_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, sizeof(matrix));
  if (data == nullptr) throw std::bad_alloc{};
  std::copy_n(matrix.data(), matrix.size(), reinterpret_cast<std::int32_t*>(data));
}

void FilmWriter::begin(std::uint64_t headerBytes) {
  av::Options options;
  options.set("moov_size", std::to_string(headerBytes));
  check(avformat_write_header(format_, options.get()));
}

void FilmWriter::write(AVPacket& packet, const AVStream& stream, AVRational unit) {
  packet.stream_index = stream.index;
  packet.pos = -1;
  av_packet_rescale_ts(&packet, unit, stream.time_base);
  check(av_interleaved_write_frame(format_, &packet));
}

void FilmWriter::finish() {
  check(av_write_trailer(format_));
  avio_flush(bytes_.get());
  bytes_.requireNoError();
}

int FilmWriter::check(int result) const {
  if (result < 0) bytes_.requireNoError();
  return av::check(result, ConversionFailure::failed);
}

std::uint64_t headerBytes(std::uint64_t pictures, std::uint64_t sounds, std::uint64_t tracks) {
  // The maximum per packet: its size, a duration of its own, and a chunk of its own with a 64-bit
  // offset; for a picture also its time shift and its keyframe mark.
  constexpr std::uint64_t ofSound = 4 + 8 + 12 + 8;
  constexpr std::uint64_t ofPicture = ofSound + 8 + 4;
  constexpr std::uint64_t ofTrack = 2048;
  return pictures * ofPicture + sounds * ofSound + (tracks + 1) * ofTrack;
}

}  // namespace tavrix
