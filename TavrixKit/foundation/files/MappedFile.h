#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace tavrix {

/// A regular file of the disk, mapped into memory. The system loads only the pages that are read.
/// For files that ship with the program: if another process truncates the file, reading it crashes
/// this process.
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
