#pragma once

#include <cstdint>
#include <span>

/// Bytes of an open file by their place in it, without moving its position. Failures come back as
/// the system's code (errno), negative, for callers that may not throw.
namespace tavrix::descriptors {

/// The file's length in bytes.
std::int64_t size(int descriptor);
/// Reads up to the buffer's length and gives how many bytes there were: fewer than asked for only
/// where the file ends.
std::int64_t readAt(int descriptor, std::uint64_t offset, std::span<char> buffer);
/// Writes all bytes and gives their number.
std::int64_t writeAt(int descriptor, std::uint64_t offset, std::span<const char> bytes);

}  // namespace tavrix::descriptors
