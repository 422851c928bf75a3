#pragma once

#include <optional>
#include <vector>

#include "conversion/codecs/Av.h"
#include "conversion/codecs/ByteStream.h"
#include "conversion/codecs/FilmSource.h"

namespace tavrix {

/// Writes a new MP4 file with its header at the front, so that the film can be played while it is
/// being received. Throws ConversionError, and FileError if the file cannot be written.
class FilmWriter {
 public:
  /// The descriptor must be open for writing and the file empty. The caller keeps the ownership.
  explicit FilmWriter(int descriptor);
  ~FilmWriter();
  FilmWriter(const FilmWriter&) = delete;
  FilmWriter& operator=(const FilmWriter&) = delete;

  /// Adds a stream with the dates, language, name and time unit of the source's stream.
  AVStream& addStream(const AVStream& source);
  /// Sets the matrix by which players turn the pictures of a stream.
  void setDisplayMatrix(AVStream& stream, const DisplayMatrix& matrix);
  /// Begins the file after all streams were added and described; the header will take at most
  /// `headerBytes`.
  void begin(std::uint64_t headerBytes);
  /// Writes a packet whose times are in `unit`. Takes the packet over.
  void write(AVPacket& packet, const AVStream& stream, AVRational unit);
  void finish();

  AVFormatContext& format() { return *format_; }

 private:
  int check(int result) const;

  av::ByteStream bytes_;
  AVFormatContext* format_ = nullptr;
};

/// Returns an upper bound of a film header's size, in bytes. `pictures` and `sounds` are the
/// numbers of packets of each kind, `tracks` is the number of streams.
std::uint64_t headerBytes(std::uint64_t pictures, std::uint64_t sounds, std::uint64_t tracks);

}  // namespace tavrix
