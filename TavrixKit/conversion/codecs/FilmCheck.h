#pragma once

#include <cstdint>
#include <optional>

#include "conversion/codecs/FilmSource.h"

namespace tavrix {

/// The expected properties of a converted film, from the data read of its source.
struct ExpectedFilm {
  ShownSize size;
  std::optional<DisplayMatrix> matrix;
  double seconds = 0;         ///< of the pictures
  std::int64_t pictures = 0;  ///< pictures that are shown
  std::size_t sounds = 0;     ///< tracks

  friend bool operator==(const ExpectedFilm&, const ExpectedFilm&) = default;
};

/// The allowed difference in duration, in seconds: edits of the source may end in the middle of a
/// picture.
inline constexpr double durationTolerance = 0.1;

/// Opens the finished film and decodes its first picture, and everything from the last keyframe to
/// its end. Throws ConversionError with `wrongResult` unless the film is as expected.
void requireFilm(int descriptor, const ExpectedFilm& expected);

}  // namespace tavrix
