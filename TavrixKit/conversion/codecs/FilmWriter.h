#pragma once

#include <optional>
#include <vector>

#include "conversion/codecs/Av.h"
#include "conversion/codecs/ByteStream.h"
#include "conversion/codecs/FilmSource.h"

namespace tavrix {

/// Writes a new MP4 file whose header stands in front, so that a film can be played while it comes.
/// Throws ConversionError, and FileError when the file cannot be written.
class FilmWriter {
 public:
  /// The descriptor is open for writing, empty, and stays the caller's.
  explicit FilmWriter(int descriptor);
  ~FilmWriter();
  FilmWriter(const FilmWriter&) = delete;
  FilmWriter& operator=(const FilmWriter&) = delete;

  /// A new stream with the dates, language and name of the source's and its unit of time.
  AVStream& addStream(const AVStream& source);
  /// Turns the pictures of a stream when they are shown.
  void setDisplayMatrix(AVStream& stream, const DisplayMatrix& matrix);
  /// All streams are added and described; the header will take at most `headerBytes`.
  void begin(std::uint64_t headerBytes);
  /// Takes a packet with times in `unit`.
  void write(AVPacket& packet, const AVStream& stream, AVRational unit);
  void finish();

  AVFormatContext& format() { return *format_; }

 private:
  int check(int result) const;

  av::ByteStream bytes_;
  AVFormatContext* format_ = nullptr;
};

/// What the header of a film takes at most, in bytes: `pictures` and `sounds` are the packets of
/// each kind, `tracks` the streams.
std::uint64_t headerBytes(std::uint64_t pictures, std::uint64_t sounds, std::uint64_t tracks);

}  // namespace tavrix
