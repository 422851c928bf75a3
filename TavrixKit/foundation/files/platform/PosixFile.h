#pragma once

#include <span>
#include <string>

#include "foundation/files/Folder.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {

void writeAll(int descriptor, std::span<const std::byte> bytes, const std::string& path);
/// 0 at the end of the file.
std::size_t readSome(int descriptor, std::span<char> buffer, const std::string& path);

class PosixWritableFile : public WritableFile {
 public:
  PosixWritableFile(FileDescriptor descriptor, std::string path)
      : descriptor_(std::move(descriptor)), path_(std::move(path)) {}

  void append(std::span<const std::byte> bytes) override;
  void setModificationTime(Instant time) override;
  void startWriteback() override;
  void sync() override;
  void close() override;

 private:
  FileDescriptor descriptor_;
  std::string path_;
};

}  // namespace tavrix
