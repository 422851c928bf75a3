#pragma once

#include <cstdint>
#include <string>

#include "archives/ZipEntry.h"
#include "foundation/TimeZone.h"

/// The records of a zip archive as bytes, after PKWARE's APPNOTE 6.3.9; the field for modification
/// times is that of Info-ZIP ("UT"). Sizes and offsets that do not fit 32 bits go to the ZIP64
/// fields, and only those.
namespace tavrix::ZipRecords {

/// Where in a local header the CRC stands.
inline constexpr std::uint64_t crcOffset = 14;

/// What stands before an entry's bytes. The time of MS-DOS is the wall clock of `zone`.
std::string localHeader(const ZippedEntry& zipped, const TimeZone& zone);
/// What the directory at the archive's end says of the entry.
std::string directoryEntry(const ZippedEntry& zipped, const TimeZone& zone);
/// What stands after the directory, which has so many entries and bytes and begins at `offset`.
std::string directoryEnd(std::uint64_t entries, std::uint64_t bytes, std::uint64_t offset);

}  // namespace tavrix::ZipRecords
