#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace tavrix {

/// Reads pieces of one file by their place in it, so that a file on a slow cable need not come as a
/// whole. Implementations throw what their place throws; a reader of metadata lets it pass.
class RangedReader {
 public:
  virtual ~RangedReader() = default;
  /// The file's length in bytes.
  virtual std::uint64_t size() const = 0;
  /// Fills the buffer with the bytes from `offset` on and gives how many there were: fewer than
  /// asked for only where the file ends.
  virtual std::size_t read(std::uint64_t offset, std::span<char> buffer) = 0;
};

/// Opens a regular file of the disk; a symbolic link at its place is refused with ELOOP. Throws
/// FileError, also from read().
std::unique_ptr<RangedReader> openForRangedReading(const std::string& path);

}  // namespace tavrix
