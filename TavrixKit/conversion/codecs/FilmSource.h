#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "conversion/codecs/Av.h"
#include "conversion/codecs/ByteStream.h"

namespace tavrix {

/// The limits for one film; films of phones stay below them.
struct FilmBounds {
  static constexpr int streams = 32;
  static constexpr int sounds = 8;
  static constexpr std::int64_t pictures = 4'000'000;
  static constexpr double picturesASecond = 1000;
  static constexpr std::chrono::hours duration{24};
};

/// The linear transformation by which a film's pictures are turned, as stored in its header
/// (ISO/IEC 14496-12, 8.3.2).
using DisplayMatrix = std::array<std::int32_t, 9>;

/// An opened film: only its pictures and sounds. Throws ConversionError.
class FilmSource {
 public:
  /// The caller keeps the ownership of the descriptor, which must stay open.
  explicit FilmSource(int descriptor);
  /// Opens a QuickTime or MP4 file in memory for its first pictures alone: its sounds are left out,
  /// and a stream of H.264 or HEVC has only the properties that the file's header states. The bytes
  /// must outlive the film.
  explicit FilmSource(std::span<const char> bytes);
  ~FilmSource();
  FilmSource(const FilmSource&) = delete;
  FilmSource& operator=(const FilmSource&) = delete;

  const AVFormatContext& format() const { return *format_; }
  const AVStream& picture() const { return *picture_; }
  /// Returns the sounds that can be decoded, in the film's order.
  const std::vector<const AVStream*>& sounds() const { return sounds_; }

  /// Reads the next packet of a picture or sound. Returns false after the last one. Throws if the
  /// film is truncated or damaged, so a film that was read to the end has everything that its
  /// header promised.
  bool next(AVPacket& packet);
  /// Continues with the last keyframe at or before `time` (in its stream's units).
  void seek(std::int64_t time);

  /// Returns the duration of the pictures; nullopt if neither header nor index has it.
  std::optional<double> seconds() const;
  /// Returns the number of pictures in the film's index, including those that no edit shows; 0
  /// without an index.
  std::int64_t indexedPictures() const;
  /// Returns true if every picture of the file is shown.
  bool showsAllPictures() const;
  /// Returns true if the film is in a QuickTime or MP4 file.
  bool isIsoFile() const;
  std::optional<DisplayMatrix> displayMatrix() const;
  /// Returns a text of the film's metadata; nullopt if there is none of that name.
  std::optional<std::string> tag(const char* name) const;

 private:
  void open(bool isForPictures);
  void openFormat();
  bool describesPictures() const;
  void probeStreams();
  void choosePicture();
  void requireFormat() const;
  void chooseSounds();
  void requireBounds() const;
  /// Returns the length of the pictures, or the greatest that is accepted if it is not known.
  double limitedSeconds() const;
  /// Refuses a film whose index lists more bytes than the file has: a small file could otherwise
  /// list the same pictures a million times.
  void requireDistinctBytes() const;
  void requireComplete() const;

  av::ByteStream bytes_;
  AVFormatContext* format_ = nullptr;
  AVStream* picture_ = nullptr;
  std::vector<const AVStream*> sounds_;
  std::int64_t picturesRead_ = 0;
  bool hasJumped_ = false;
};

/// The width and height of a film's pictures as shown, turned according to the matrix.
struct ShownSize {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  friend bool operator==(const ShownSize&, const ShownSize&) = default;
};
ShownSize shownSize(const FilmSource& film);
/// As shownSize(), in square pixels, as in the header of an MP4 file.
ShownSize squareSize(const FilmSource& film);

}  // namespace tavrix
