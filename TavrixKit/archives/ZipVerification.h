#pragma once

#include <cstdint>
#include <deque>
#include <functional>

#include "archives/ZipEntry.h"
#include "archives/ZipError.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix::ZipVerification {

/// Called with the size of each piece that was read. An exception ends the check.
using Received = std::function<void(std::uint64_t bytes)>;

/// Reads a finished archive back entry by entry, with a reader that shares no code with the writer.
/// The archive must be consistent and have exactly these entries in this order, and the bytes of
/// every entry must match the CRC-32 that was computed when it was added. `archive` is a regular
/// file that is open for reading. Throws ZipError.
void verify(FileDescriptor archive, const std::deque<ZippedEntry>& entries,
            const Received& received = {});

}  // namespace tavrix::ZipVerification
