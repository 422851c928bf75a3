#pragma once

#include <map>
#include <memory>

#include "conversion/Conversion.h"
#include "conversion/codecs/FilmCheck.h"
#include "conversion/codecs/FilmTrack.h"

namespace tavrix {

/// The conversion of one film from one file into another.
class FilmConversion {
 public:
  FilmConversion(const ConversionFiles& files, const ConversionProgress& progress);

  /// Throws ConversionError and FileError.
  ConversionResult run();

 private:
  ConversionResult takeWhole();
  ConversionResult result() const;
  void addTracks();
  void copyDate();
  void carry();
  void see(const AVPacket& packet);
  void tell(std::int64_t time);
  std::uint64_t roomForHeader() const;
  /// Returns the duration of the pictures that carry() has seen.
  double seconds() const;
  ExpectedFilm expected(std::int64_t pictures) const;

  ConversionFiles files_;
  const ConversionProgress& progress_;
  FilmSource source_;
  FilmWriter writer_;
  std::string userData_;                              ///< a box for the header
  std::map<int, std::unique_ptr<FilmTrack>> tracks_;  ///< by the number of the source's stream

  /// The time range of the shown pictures, in their stream's unit.
  std::int64_t begin_ = INT64_MAX;
  std::int64_t end_ = INT64_MIN;
  double told_ = 0;
  int untold_ = 0;
};

}  // namespace tavrix
