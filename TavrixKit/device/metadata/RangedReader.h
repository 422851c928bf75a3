#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace tavrix {

/// Reads parts of one file by their offset, so that a file need not be transferred as a whole over
/// a slow cable. Implementations throw the errors of their storage; metadata readers let them pass.
class RangedReader {
 public:
  virtual ~RangedReader() = default;
  /// Returns the length of the file in bytes.
  virtual std::uint64_t size() const = 0;
  /// Fills `buffer` with the bytes from `offset` on. Returns their number, which is smaller than
  /// the buffer only at the end of the file.
  virtual std::size_t read(std::uint64_t offset, std::span<char> buffer) = 0;
};

/// Opens a regular file on the disk. Rejects a symbolic link at `path` with ELOOP. Throws
/// FileError; read() of the result does, too.
std::unique_ptr<RangedReader> openForRangedReading(const std::string& path);

}  // namespace tavrix
