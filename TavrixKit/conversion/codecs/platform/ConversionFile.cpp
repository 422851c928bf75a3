#include "conversion/codecs/platform/ConversionFile.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "foundation/files/FileError.h"
#include "transfer/MediaConverter.h"

namespace tavrix {

SourceMapping::SourceMapping(int descriptor, std::uint64_t maxBytes) {
  struct stat status{};
  if (::fstat(descriptor, &status) != 0) throw ConversionError{ConversionFailure::failed};
  if (status.st_size <= 0) throw ConversionError{ConversionFailure::damagedInput};
  const auto size = static_cast<std::uint64_t>(status.st_size);
  if (size > maxBytes) throw ConversionError{ConversionFailure::tooLarge};
  void* const begin =
      ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_NORESERVE, descriptor, 0);
  if (begin == MAP_FAILED) throw ConversionError{ConversionFailure::tooMuchMemory};
  bytes_ = {static_cast<char*>(begin), static_cast<std::size_t>(size)};
}

SourceMapping::~SourceMapping() { ::munmap(bytes_.data(), bytes_.size()); }

void DescriptorSink::write(std::span<const std::byte> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw FileError{FileOperation::write, {}, errno};
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
}

}  // namespace tavrix
