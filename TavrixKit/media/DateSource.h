#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace tavrix {

/// Where the date of a file comes from, the most reliable source first.
enum class DateSource {
  metadata,  ///< the date that the camera wrote into the picture
  name,      ///< a date in the name of the file
  file,      ///< the date of the file itself, which a copy may have changed
};

/// Returns "metadata", "name" or "file".
constexpr std::string_view textOf(DateSource source) {
  constexpr std::array<std::string_view, 3> texts{"metadata", "name", "file"};
  return texts.at(static_cast<std::size_t>(source));
}

/// The use of dates in the names of files that have no date of their own.
enum class DatesFromNames { ignored, used };

}  // namespace tavrix
