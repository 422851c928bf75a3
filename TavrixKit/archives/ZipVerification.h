#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>

#include "archives/ZipEntry.h"
#include "archives/ZipError.h"

namespace tavrix::ZipVerification {

/// Told of each piece that was read; what it throws ends the check.
using Received = std::function<void(std::uint64_t bytes)>;

/// Reads a finished archive back entry by entry, with a reader that shares nothing with the writer:
/// the archive must be consistent in itself, hold these entries in this order and no others, and
/// every entry's bytes must give the CRC-32 that was computed when it was put in. `path` is that of
/// a file of the disk. Throws ZipError.
void verify(const std::string& path, const std::deque<ZippedEntry>& entries,
            const Received& received = {});

}  // namespace tavrix::ZipVerification
