#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <cerrno>

#include "foundation/files/FileError.h"
#include "foundation/files/MappedFile.h"
#include "foundation/files/platform/PosixFile.h"

namespace tavrix {

MappedFile::MappedFile(const std::string& path) {
  const FileDescriptor descriptor{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
  if (!descriptor.isOpen()) throw FileError{FileOperation::open, path, errno};
  struct stat status{};
  if (::fstat(descriptor.number(), &status) != 0) {
    throw FileError{FileOperation::status, path, errno};
  }
  if (!S_ISREG(status.st_mode)) throw FileError{FileOperation::open, path, EINVAL};
  const auto size = static_cast<std::size_t>(status.st_size);
  // The system refuses an empty mapping.
  if (size == 0) return;
  void* const start = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor.number(), 0);
  if (start == MAP_FAILED) throw FileError{FileOperation::read, path, errno};
  bytes_ = {static_cast<const std::byte*>(start), size};
}

MappedFile::~MappedFile() {
  // The span is const, but munmap takes the non-const pointer that mmap returned.
  if (!bytes_.empty()) ::munmap(const_cast<std::byte*>(bytes_.data()), bytes_.size());
}

}  // namespace tavrix
