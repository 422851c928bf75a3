#pragma once

#include <cstdint>
#include <optional>

#include "conversion/codecs/FilmSource.h"

namespace tavrix {

/// What a converted film must be, by what was read of its source.
struct ExpectedFilm {
  ShownSize size;
  std::optional<DisplayMatrix> matrix;
  double seconds = 0;         ///< of the pictures
  std::int64_t pictures = 0;  ///< that are shown
  std::size_t sounds = 0;     ///< tracks

  friend bool operator==(const ExpectedFilm&, const ExpectedFilm&) = default;
};

/// The duration may differ by so many seconds: edits of the source may end in the middle of a
/// picture.
inline constexpr double durationTolerance = 0.1;

/// Opens the finished film and decodes its first picture, and from the last picture that needs no
/// other all to its end. Throws ConversionError with `wrongResult` unless it is what was expected.
void requireFilm(int descriptor, const ExpectedFilm& expected);

}  // namespace tavrix
