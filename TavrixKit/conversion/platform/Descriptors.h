#pragma once

#include <cstdint>
#include <span>

/// Read and write an open file at given offsets, without moving its position. Errors are returned
/// as negative errno values, for callers that must not throw.
namespace tavrix::descriptors {

/// Returns the file's length in bytes.
std::int64_t size(int descriptor);
/// Reads up to the buffer's length and returns the number of bytes read, which is smaller only at
/// the end of the file.
std::int64_t readAt(int descriptor, std::uint64_t offset, std::span<char> buffer);
/// Writes all bytes and returns their number.
std::int64_t writeAt(int descriptor, std::uint64_t offset, std::span<const char> bytes);

}  // namespace tavrix::descriptors
