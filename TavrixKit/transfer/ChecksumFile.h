#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/files/Folder.h"

namespace tavrix {

/// A list of checksums in the format that "sha256sum -c" of the GNU core utilities reads: one line
/// per file with the digest, two spaces and the path. In a line that begins with a backslash, a
/// backslash, line feed or carriage return in the path is written as "\\", "\n" or "\r".
namespace ChecksumFile {

inline constexpr std::string_view name = "SHA256SUMS";

struct Entry {
  std::string sha256;  ///< 64 hexadecimal digits
  std::string path;    ///< relative to the folder of the list

  friend bool operator==(const Entry&, const Entry&) = default;
};

/// Returns the line of an entry, including its line feed.
std::string encode(const Entry& entry);
/// Returns the entry of a line given without its line feed, or nullopt if the line is malformed.
std::optional<Entry> decode(std::string_view line);

/// Returns the entries of the list in `folder`, in file order; an empty vector if no file has the
/// name. Returns nullopt if the file is not a complete list of checksums. Throws FileError.
std::optional<std::vector<Entry>> read(const Folder& folder);
/// Writes the entries in the given order, atomically. Throws FileError.
void write(Folder& folder, const std::vector<Entry>& entries);

}  // namespace ChecksumFile

}  // namespace tavrix
