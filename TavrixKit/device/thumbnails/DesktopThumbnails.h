#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/Time.h"

namespace tavrix {

/// The thumbnails that other programs of the desktop keep, as the Thumbnail Managing Standard of
/// freedesktop.org describes them: PNG files named after the MD5 of the file's URI. They are bytes
/// from outside, so their pixels are decoded only where those of pictures are.
namespace DesktopThumbnails {

/// A file of this machine as its thumbnails identify it.
struct File {
  std::string path;  ///< absolute
  std::uint64_t bytes = 0;
  Instant modified;

  friend bool operator==(const File&, const File&) = default;
};

/// Returns the URI of an absolute path: "file:///a/b%20c.jpg".
std::string uriOf(std::string_view path);

/// Returns true if a PNG file says in its text chunks that it shows this very version of the file.
bool isOf(std::string_view png, const File& file);

/// Returns the smallest thumbnail of a file that has at least `leastSide` pixels on its longest
/// side, as a PNG file, or nullopt if there is none. `folder` is "thumbnails" in the user's cache
/// folder.
std::optional<std::string> find(const std::string& folder, const File& file,
                                std::uint32_t leastSide);

}  // namespace DesktopThumbnails

}  // namespace tavrix
