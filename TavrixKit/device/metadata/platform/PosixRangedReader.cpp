#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "device/metadata/RangedReader.h"
#include "foundation/files/FileError.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {
namespace {

class PosixRangedReader : public RangedReader {
 public:
  PosixRangedReader(FileDescriptor file, std::string path, std::uint64_t size)
      : file_(std::move(file)), path_(std::move(path)), size_(size) {}

  std::uint64_t size() const override { return size_; }

  std::size_t read(std::uint64_t offset, std::span<char> buffer) override {
    std::size_t done = 0;
    while (done < buffer.size()) {
      const ssize_t count = ::pread(file_.number(), buffer.data() + done, buffer.size() - done,
                                    static_cast<off_t>(offset + done));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) throw FileError{FileOperation::read, path_, errno};
      if (count == 0) break;
      done += static_cast<std::size_t>(count);
    }
    return done;
  }

 private:
  FileDescriptor file_;
  std::string path_;
  std::uint64_t size_;
};

}  // namespace

std::unique_ptr<RangedReader> openForRangedReading(const std::string& path) {
  // Without O_NONBLOCK, opening a named pipe would block until it has a writer.
  FileDescriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW)};
  if (!file.isOpen()) throw FileError{FileOperation::open, path, errno};
  struct stat status{};
  if (::fstat(file.number(), &status) != 0) throw FileError{FileOperation::status, path, errno};
  if (!S_ISREG(status.st_mode)) throw FileError{FileOperation::open, path, EINVAL};
  // By default the system reads ahead far more of the file than is needed.
  ::posix_fadvise(file.number(), 0, 0, POSIX_FADV_RANDOM);
  return std::make_unique<PosixRangedReader>(std::move(file), path,
                                             static_cast<std::uint64_t>(status.st_size));
}

}  // namespace tavrix
