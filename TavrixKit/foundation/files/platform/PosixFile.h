#pragma once

#include <sys/stat.h>

#include <array>
#include <span>
#include <string>

#include "foundation/files/Folder.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {

void writeAll(int descriptor, std::span<const std::byte> bytes, const std::string& path);
/// Returns the number of bytes read; 0 at the end of the file.
std::size_t readSome(int descriptor, std::span<char> buffer, const std::string& path);

class PosixFileReader : public ByteReader {
 public:
  PosixFileReader(FileDescriptor descriptor, std::string path)
      : descriptor_(std::move(descriptor)), path_(std::move(path)) {}

  std::size_t read(std::span<char> buffer) override {
    return readSome(descriptor_.number(), buffer, path_);
  }

 private:
  FileDescriptor descriptor_;
  std::string path_;
};

/// Returns the arguments that make the utimens functions set the modification time, and the
/// access time to the present.
std::array<struct timespec, 2> modificationTimes(Instant time);

class PosixWritableFile : public WritableFile {
 public:
  PosixWritableFile(FileDescriptor descriptor, std::string path)
      : descriptor_(std::move(descriptor)), path_(std::move(path)) {}

  void append(std::span<const std::byte> bytes) override;
  void overwrite(std::uint64_t offset, std::span<const std::byte> bytes) override;
  void startWriteback() override;
  void sync() override;
  void close() override;

 private:
  FileDescriptor descriptor_;
  std::string path_;
};

}  // namespace tavrix
