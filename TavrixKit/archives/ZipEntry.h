#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/Time.h"

namespace tavrix {

/// A file to be put into an archive.
struct ZipEntry {
  std::string name;             ///< UTF-8, as written into the archive, "/" between parts
  std::uint64_t size = 0;       ///< bytes
  Instant modified;             ///< stored in whole seconds
  unsigned permissions = 0644;  ///< Unix mode bits

  friend bool operator==(const ZipEntry&, const ZipEntry&) = default;
};

/// An entry that is in an archive.
struct ZippedEntry {
  ZipEntry entry;
  std::uint32_t crc = 0;     ///< CRC-32 of the bytes
  std::uint64_t offset = 0;  ///< of the local header, from the archive's beginning

  friend bool operator==(const ZippedEntry&, const ZippedEntry&) = default;
};

/// Returns true if an entry of this name stays below the folder into which any program unpacks it.
/// The name must be relative, without "." and ".." and empty parts, where a backslash is treated as
/// a separator, too; it must be valid UTF-8 of at most 65,535 bytes without control characters.
bool isSafeEntryName(std::string_view name);

}  // namespace tavrix
