#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "foundation/files/FileError.h"
#include "foundation/files/LockFile.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {
namespace {

/// Returns true if the path still leads to the open file.
bool isAt(const std::string& path, int descriptor) {
  struct stat there{};
  struct stat here{};
  return ::lstat(path.c_str(), &there) == 0 && ::fstat(descriptor, &here) == 0 &&
         there.st_dev == here.st_dev && there.st_ino == here.st_ino;
}

}  // namespace

std::unique_ptr<LockFile> LockFile::tryLock(const std::string& path) {
  FileDescriptor file{
      ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600)};
  if (!file.isOpen()) throw FileError{FileOperation::create, path, errno};
  if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return nullptr;
    throw FileError{FileOperation::open, path, errno};
  }
  // Its last owner may have removed it after it was opened here. A lock on a file without a name
  // keeps nobody out.
  if (!isAt(path, file.number())) return nullptr;
  return std::unique_ptr<LockFile>{new LockFile{path, file.release()}};
}

LockFile::LockFile(std::string path, int descriptor)
    : path_(std::move(path)), descriptor_(descriptor) {}

LockFile::~LockFile() { ::close(descriptor_); }

void LockFile::remove() noexcept { ::unlink(path_.c_str()); }

}  // namespace tavrix
