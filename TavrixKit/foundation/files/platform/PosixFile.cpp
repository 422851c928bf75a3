#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "foundation/files/FileError.h"
#include "foundation/files/FileReader.h"
#include "foundation/files/platform/PosixFile.h"

namespace tavrix {

void writeAll(int descriptor, std::span<const std::byte> bytes, const std::string& path) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw FileError{FileOperation::write, path, errno};
    // A volume that writes nothing and reports no error would make this loop endless.
    if (count == 0) throw FileError{FileOperation::write, path, ENOSPC};
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
}

std::size_t readSome(int descriptor, std::span<char> buffer, const std::string& path) {
  for (;;) {
    const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) throw FileError{FileOperation::read, path, errno};
  }
}

std::unique_ptr<ByteReader> openFileForReading(const std::string& path) {
  // Without O_NONBLOCK, opening a named pipe would wait for a writer.
  FileDescriptor descriptor{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
  if (!descriptor.isOpen()) throw FileError{FileOperation::open, path, errno};
  struct stat status{};
  if (::fstat(descriptor.number(), &status) != 0)
    throw FileError{FileOperation::status, path, errno};
  if (S_ISDIR(status.st_mode)) throw FileError{FileOperation::open, path, EISDIR};
  if (!S_ISREG(status.st_mode)) throw FileError{FileOperation::open, path, EINVAL};
  return std::make_unique<PosixFileReader>(std::move(descriptor), path);
}

void PosixWritableFile::append(std::span<const std::byte> bytes) {
  writeAll(descriptor_.number(), bytes, path_);
}

void PosixWritableFile::overwrite(std::uint64_t offset, std::span<const std::byte> bytes) {
  while (!bytes.empty()) {
    const ssize_t count =
        ::pwrite(descriptor_.number(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) throw FileError{FileOperation::write, path_, count < 0 ? errno : ENOSPC};
    offset += static_cast<std::uint64_t>(count);
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
}

std::array<struct timespec, 2> modificationTimes(Instant time) {
  const auto second = std::chrono::floor<std::chrono::seconds>(time);
  const auto rest = std::chrono::nanoseconds{time - second};
  // Drivers of some volumes set both times or none, so that of the last access cannot be left out.
  struct timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return {{now, {second.time_since_epoch().count(), static_cast<long>(rest.count())}}};
}

void PosixWritableFile::startWriteback() {
  // Only a hint: if the volume ignores it, sync() does all the work.
  ::sync_file_range(descriptor_.number(), 0, 0, SYNC_FILE_RANGE_WRITE);
}

void PosixWritableFile::sync() {
  if (::fsync(descriptor_.number()) != 0) throw FileError{FileOperation::sync, path_, errno};
}

void PosixWritableFile::close() {
  if (::close(descriptor_.release()) != 0 && errno != EINTR) {
    throw FileError{FileOperation::close, path_, errno};
  }
}

}  // namespace tavrix
