#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "conversion/codecs/Av.h"
#include "conversion/codecs/ByteStream.h"

namespace tavrix {

/// What is taken on of one film; more is no film of a phone.
struct FilmBounds {
  static constexpr int streams = 32;
  static constexpr int sounds = 8;
  static constexpr std::int64_t pictures = 4'000'000;
  static constexpr std::chrono::hours duration{24};
};

/// The linear part of how a film's pictures are turned, as its header says; ISO/IEC
/// 14496-12, 8.3.2.
using DisplayMatrix = std::array<std::int32_t, 9>;

/// An opened film: its pictures, its sounds, and nothing else of it. Throws ConversionError.
class FilmSource {
 public:
  /// The descriptor stays open and is the caller's.
  explicit FilmSource(int descriptor);
  ~FilmSource();
  FilmSource(const FilmSource&) = delete;
  FilmSource& operator=(const FilmSource&) = delete;

  const AVFormatContext& format() const { return *format_; }
  const AVStream& picture() const { return *picture_; }
  /// Those that can be decoded, in the film's order.
  const std::vector<const AVStream*>& sounds() const { return sounds_; }

  /// The next packet of a picture or sound; false behind the last. A film that is cut short or
  /// broken throws, so what was read to the end is all that the header promised.
  bool next(AVPacket& packet);
  /// Continues with the last picture at or before `time` (in its stream's units) that needs no
  /// other.
  void seek(std::int64_t time);

  /// Of the pictures; nothing where neither header nor index say.
  std::optional<double> seconds() const;
  /// Pictures as the film's index lists them, those that no edit shows included; 0 without one.
  std::int64_t indexedPictures() const;
  /// Whether every picture of the file is shown.
  bool showsAllPictures() const;
  /// Whether the film is in a QuickTime or MP4 file.
  bool isIsoFile() const;
  std::optional<DisplayMatrix> displayMatrix() const;
  /// A text among the film's metadata.
  std::optional<std::string> tag(const char* name) const;

 private:
  void open();
  void choosePicture();
  void chooseSounds();
  void requireBounds() const;
  void requireComplete() const;

  av::ByteStream bytes_;
  AVFormatContext* format_ = nullptr;
  AVStream* picture_ = nullptr;
  std::vector<const AVStream*> sounds_;
  std::int64_t picturesRead_ = 0;
  bool hasJumped_ = false;
};

/// Width and height of a film's pictures as they are shown, turned as the matrix says.
struct ShownSize {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  friend bool operator==(const ShownSize&, const ShownSize&) = default;
};
ShownSize shownSize(const FilmSource& film);
/// The same in square pixels, as the header of an MP4 file tells it.
ShownSize squareSize(const FilmSource& film);

}  // namespace tavrix
