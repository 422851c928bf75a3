#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/files/Folder.h"

namespace tavrix {

/// A list of checksums in the form that "sha256sum -c" of the GNU core utilities reads: one line
/// per file, the digest, two spaces, the path. A line that begins with a backslash has backslash,
/// line feed and carriage return in its path written as "\\", "\n" and "\r".
namespace ChecksumFile {

inline constexpr std::string_view name = "SHA256SUMS";

struct Entry {
  std::string sha256;  ///< 64 hexadecimal digits
  std::string path;    ///< relative to the folder of the list

  friend bool operator==(const Entry&, const Entry&) = default;
};

/// The line of an entry, with its line feed.
std::string encode(const Entry& entry);
/// The entry of a line without its line feed; nothing for what is none.
std::optional<Entry> decode(std::string_view line);

/// The list in a folder, in its order; empty when nothing has the name, and nothing when what has
/// it is no list of checksums, whole. Throws FileError.
std::optional<std::vector<Entry>> read(const Folder& folder);
/// Writes the list in their order, whole or not at all. Throws FileError.
void write(Folder& folder, const std::vector<Entry>& entries);

}  // namespace ChecksumFile

}  // namespace tavrix
