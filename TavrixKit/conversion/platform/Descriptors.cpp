#include "conversion/platform/Descriptors.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tavrix::descriptors {

std::int64_t size(int descriptor) {
  struct stat status{};
  if (::fstat(descriptor, &status) != 0) return -errno;
  return status.st_size;
}

std::int64_t readAt(int descriptor, std::uint64_t offset, std::span<char> buffer) {
  std::size_t done = 0;
  while (done < buffer.size()) {
    const ssize_t count = ::pread(descriptor, buffer.data() + done, buffer.size() - done,
                                  static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return -errno;
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return static_cast<std::int64_t>(done);
}

std::int64_t writeAt(int descriptor, std::uint64_t offset, std::span<const char> bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count = ::pwrite(descriptor, bytes.data() + done, bytes.size() - done,
                                   static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return -errno;
    done += static_cast<std::size_t>(count);
  }
  return static_cast<std::int64_t>(done);
}

}  // namespace tavrix::descriptors
