#include "media/LocalMediaSource.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>

#include "foundation/files/AtomicFile.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {
namespace {

constexpr std::size_t bufferBytes = 512 * 1024;

struct stat statusOf(const FileDescriptor& file, const std::string& name) {
  struct stat status{};
  if (::fstat(file.number(), &status) != 0)
    throw SourceError{SourceError::Kind::unreadable, name, errno};
  return status;
}

bool isUnchanged(const struct stat& before, const struct stat& after) {
  return before.st_size == after.st_size && before.st_mtim.tv_sec == after.st_mtim.tv_sec &&
         before.st_mtim.tv_nsec == after.st_mtim.tv_nsec;
}

/// Returns the kind of an error of open().
SourceError::Kind kindOf(int code) {
  if (code == ENOENT) return SourceError::Kind::notFound;
  // ENXIO: a socket.
  return code == ELOOP || code == ENXIO ? SourceError::Kind::notRegular
                                        : SourceError::Kind::unreadable;
}

std::span<std::byte> threadBuffer() {
  thread_local const auto buffer = std::make_unique<std::byte[]>(bufferBytes);
  return {buffer.get(), bufferBytes};
}

}  // namespace

void LocalMediaSource::download(const MediaAsset& asset, DownloadDestination& destination) {
  const std::string name{asset.name()};
  if (!isSafePathComponent(name)) throw SourceError{SourceError::Kind::unsafeName, name};
  // A link could lead to any file of the computer. Without O_NONBLOCK, opening a named pipe would
  // wait for a writer.
  const FileDescriptor file{
      ::open((baseURL_ + "/" + name).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW)};
  if (!file.isOpen()) {
    throw SourceError{kindOf(errno), name, errno};
  }
  const struct stat before = statusOf(file, name);
  if (S_ISDIR(before.st_mode)) throw SourceError{SourceError::Kind::unreadable, name, EISDIR};
  if (!S_ISREG(before.st_mode)) {
    throw SourceError{SourceError::Kind::notRegular, name};
  }
  const std::span<std::byte> buffer = threadBuffer();
  for (;;) {
    const ssize_t count = ::read(file.number(), buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw SourceError{SourceError::Kind::unreadable, name, errno};
    if (count == 0) break;
    destination.append(buffer.first(static_cast<std::size_t>(count)));
  }
  if (!isUnchanged(before, statusOf(file, name))) {
    throw SourceError{SourceError::Kind::changedWhileRead, name};
  }
}

}  // namespace tavrix
