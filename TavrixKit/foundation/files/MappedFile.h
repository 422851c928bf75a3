#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace tavrix {

/// A regular file of the disk as bytes in memory, read only where they are looked at. For files
/// that ship with the program: one that another process cuts short meanwhile ends this one.
class MappedFile {
 public:
  /// Throws FileError.
  explicit MappedFile(const std::string& path);
  ~MappedFile();
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  std::span<const std::byte> bytes() const { return bytes_; }

 private:
  std::span<const std::byte> bytes_;
};

}  // namespace tavrix
