#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/Time.h"

namespace tavrix {

/// A file to be put into an archive.
struct ZipEntry {
  std::string name;             ///< UTF-8 as it is written, "/" between parts
  std::uint64_t size = 0;       ///< bytes
  Instant modified;             ///< kept in whole seconds
  unsigned permissions = 0644;  ///< of Unix

  friend bool operator==(const ZipEntry&, const ZipEntry&) = default;
};

/// An entry that is in an archive.
struct ZippedEntry {
  ZipEntry entry;
  std::uint32_t crc = 0;     ///< CRC-32 of the bytes
  std::uint64_t offset = 0;  ///< of the local header, from the archive's beginning

  friend bool operator==(const ZippedEntry&, const ZippedEntry&) = default;
};

/// Whether an entry of the name stays, unpacked by whatever program, below the folder that it is
/// unpacked into: relative, without "." and ".." and empty parts, a backslash counted as a
/// separator, too; valid UTF-8 of at most 65,535 bytes without control characters.
bool isSafeEntryName(std::string_view name);

}  // namespace tavrix
