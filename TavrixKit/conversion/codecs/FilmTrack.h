#pragma once

#include <memory>

#include "conversion/codecs/FilmWriter.h"

namespace tavrix {

/// Transfers one stream from the source to the result.
class FilmTrack {
 public:
  virtual ~FilmTrack() = default;
  /// Processes the stream's next packet. Throws ConversionError, and FileError if the result cannot
  /// be written.
  virtual void take(AVPacket& packet) = 0;
  /// Call this after the last packet.
  virtual void finish() {}
  /// Returns the number of packets written.
  std::int64_t written() const { return written_; }

 protected:
  std::int64_t written_ = 0;
};

/// The encoding of pictures: x264's constant rate factor and its effort to reduce the size. On
/// clips of phones this factor keeps a structural similarity of 0.99.
struct PictureQuality {
  static constexpr const char* rateFactor = "20";
  static constexpr const char* preset = "veryfast";
  /// The maximum distance of keyframes, so that players can seek.
  static constexpr int secondsBetweenKeys = 2;
};

/// Creates a track that copies pictures or sounds unchanged.
std::unique_ptr<FilmTrack> copiedTrack(const AVStream& source, FilmWriter& writer);
/// Creates a track that encodes pictures as H.264, keeping their times.
std::unique_ptr<FilmTrack> encodedPictures(const AVStream& source, FilmWriter& writer);
/// Creates a track that encodes sounds as AAC.
std::unique_ptr<FilmTrack> encodedSounds(const AVStream& source, FilmWriter& writer);

}  // namespace tavrix
