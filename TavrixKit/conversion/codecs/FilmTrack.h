#pragma once

#include <memory>

#include "conversion/codecs/FilmWriter.h"

namespace tavrix {

/// The way of one stream from the source into the result.
class FilmTrack {
 public:
  virtual ~FilmTrack() = default;
  /// Takes the stream's next packet. Throws ConversionError, and FileError when the result cannot
  /// be written.
  virtual void take(AVPacket& packet) = 0;
  /// No packet follows.
  virtual void finish() {}
  /// Packets that were written.
  std::int64_t written() const { return written_; }

 protected:
  std::int64_t written_ = 0;
};

/// How pictures are encoded: the x264 encoder's constant rate factor, and how much it tries for the
/// size. On clips of phones this factor keeps a structural similarity of 0.99.
struct PictureQuality {
  static constexpr const char* rateFactor = "20";
  static constexpr const char* preset = "veryfast";
  /// A picture that needs no other comes at least so often, so that players can jump.
  static constexpr int secondsBetweenKeys = 2;
};

/// Pictures or sounds as they are.
std::unique_ptr<FilmTrack> copiedTrack(const AVStream& source, FilmWriter& writer);
/// Pictures as H.264, with the times that they had.
std::unique_ptr<FilmTrack> encodedPictures(const AVStream& source, FilmWriter& writer);
/// Sounds as AAC.
std::unique_ptr<FilmTrack> encodedSounds(const AVStream& source, FilmWriter& writer);

}  // namespace tavrix
