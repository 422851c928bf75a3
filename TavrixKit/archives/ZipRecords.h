#pragma once

#include <cstdint>
#include <string>

#include "archives/ZipEntry.h"
#include "foundation/TimeZone.h"

/// The records of a zip archive as bytes, according to PKWARE's APPNOTE 6.3.9; the field for
/// modification times is Info-ZIP's "UT". Only sizes and offsets that do not fit into 32 bits are
/// written to the ZIP64 fields.
namespace tavrix::ZipRecords {

/// Offset of the CRC in a local header, in bytes.
inline constexpr std::uint64_t crcOffset = 14;

/// Returns the header before an entry's bytes. Its MS-DOS time is local time in `zone`.
std::string localHeader(const ZippedEntry& zipped, const TimeZone& zone);
/// Returns the entry's record in the directory at the archive's end.
std::string directoryEntry(const ZippedEntry& zipped, const TimeZone& zone);
/// Returns the records after the directory, which has `entries` entries and `bytes` bytes and
/// begins at `offset`.
std::string directoryEnd(std::uint64_t entries, std::uint64_t bytes, std::uint64_t offset);

}  // namespace tavrix::ZipRecords
