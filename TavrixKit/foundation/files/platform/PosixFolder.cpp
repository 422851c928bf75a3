#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "foundation/ProcessLimits.h"
#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "foundation/files/PrivateFolder.h"
#include "foundation/files/platform/FolderListing.h"
#include "foundation/files/platform/PosixFile.h"
#include "foundation/files/platform/PosixStatus.h"

namespace tavrix {
namespace {

using SharedDescriptor = std::shared_ptr<const FileDescriptor>;

/// The most folders that stay open. They must leave enough descriptors for files.
std::size_t rememberedFolders() { return std::clamp<std::size_t>(descriptorLimit() / 8, 1, 128); }
constexpr int lockAttempts = 20;
constexpr std::chrono::milliseconds lockPause{10};

using FolderListing::folderFlags;
using FolderListing::openAgain;

/// Opens a folder part by part and refuses every link. For kernels without openat2.
int openWithoutLinks(int root, const std::string& path) {
  FileDescriptor current{::openat(root, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
  for (std::size_t begin = 0; begin <= path.size() && current.isOpen();) {
    const std::size_t end = std::min(path.find('/', begin), path.size());
    const std::string part = path.substr(begin, end - begin);
    begin = end + 1;
    if (!isSafePathComponent(part)) return errno = EXDEV, -1;
    FileDescriptor next{
        ::openat(current.number(), part.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)};
    if (!next.isOpen() && errno == ELOOP) errno = EXDEV;
    current = std::move(next);
  }
  return current.release();
}

/// Returns true if the path still leads to the open folder.
bool isAt(int root, const char* path, const FileDescriptor& folder) {
  struct stat there{};
  struct stat here{};
  return ::fstatat(root, path, &there, 0) == 0 && ::fstat(folder.number(), &here) == 0 &&
         there.st_dev == here.st_dev && there.st_ino == here.st_ino;
}

int openFolderBeneath(int root, const std::string& path) {
  struct open_how how{};
  how.flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
  how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS;
  long number = -1;
  do {
    // EAGAIN: a rename interfered with the resolution of the path.
    number = ::syscall(SYS_openat2, root, path.c_str(), &how, sizeof how);
  } while (number < 0 && (errno == EAGAIN || errno == EINTR));
  if (number < 0 && errno == ELOOP) errno = EXDEV;
  if (number < 0 && (errno == ENOSYS || errno == EPERM)) return openWithoutLinks(root, path);
  return static_cast<int>(number);
}

class PosixFolder : public Folder {
 public:
  /// `access` is what others may do with what is created: bits of a mode.
  PosixFolder(FileDescriptor root, std::string path, mode_t access)
      : root_(std::make_shared<FileDescriptor>(std::move(root))),
        path_(std::move(path)),
        access_(access) {}

  const std::string& path() const override { return path_; }
  std::optional<FileStatus> status(const std::string& path) const override;
  std::unique_ptr<WritableFile> createFile(const std::string& path) override;
  std::string readFile(const std::string& path, std::uint64_t maxBytes) const override;
  std::unique_ptr<ByteReader> openFile(const std::string& path) const override;
  FileDescriptor openDescriptor(const std::string& path) const override;
  FileDescriptor createDescriptor(const std::string& path) override;
  void setModificationTime(const std::string& path, Instant time) override;
  void makeFolders(const std::string& path) override;
  bool renameWithoutReplacing(const std::string& from, const std::string& to) override;
  void renameReplacing(const std::string& from, const std::string& to) override;
  void removeFile(const std::string& path) override;
  void removeAll(const std::string& path) override;
  void syncEntries(const std::string& folder) override;
  void syncVolume() override;
  std::vector<UnreadableFolder> visitAll(const Visitor& visitor) const override;
  std::vector<std::string> names() const override;
  void checkWritable() const override;
  bool exists() const override;
  std::uint64_t freeBytes() const override;
  bool lock() override;
  bool isLocked() const override { return isLocked_; }

 private:
  /// Returns the open folder that contains the last part of a path.
  SharedDescriptor parentOf(const std::string& path, FileOperation operation) const {
    checkPath(path, operation);
    return openRemembered(parentPath(path), operation);
  }
  /// As parentOf(), but returns nullptr if there is no such folder.
  SharedDescriptor parentIfAny(const std::string& path, FileOperation operation) const;
  void checkPath(const std::string& path, FileOperation operation) const;
  /// Creates a file that is opened with the flags `access`.
  FileDescriptor newFile(const std::string& path, int access) const;
  SharedDescriptor openRemembered(const std::string& folder, FileOperation operation) const;
  /// Removes an entry of an open folder with everything below it. Returns the error code of the
  /// first failure, or 0.
  static int removeEntry(int folder, const std::string& name);
  /// Moves a file where RENAME_NOREPLACE is not supported. Returns false if the new name is taken.
  bool moveByLink(int fromFolder, const std::string& from, int toFolder,
                  const std::string& to) const;
  [[noreturn]] void fail(FileOperation operation, const std::string& path, int code) const {
    throw FileError{operation, path.empty() ? path_ : path_ + "/" + path, code};
  }

  SharedDescriptor root_;
  std::string path_;
  mode_t access_;
  mutable std::mutex mutex_;
  mutable std::map<std::string, SharedDescriptor> remembered_;
  std::atomic<bool> isLocked_ = false;
};

void PosixFolder::checkPath(const std::string& path, FileOperation operation) const {
  if (path.find('\0') != std::string::npos) fail(operation, path, EINVAL);
  const std::string name = lastPathComponent(path);
  if (path.starts_with('/') || name == "." || name == "..") fail(operation, path, EXDEV);
}

SharedDescriptor PosixFolder::parentIfAny(const std::string& path, FileOperation operation) const {
  try {
    return parentOf(path, operation);
  } catch (const FileError& error) {
    if (error.code() == ENOENT || error.code() == ENOTDIR) return nullptr;
    throw;
  }
}

SharedDescriptor PosixFolder::openRemembered(const std::string& folder,
                                             FileOperation operation) const {
  if (folder.empty()) return root_;
  const std::lock_guard lock{mutex_};
  if (const auto found = remembered_.find(folder); found != remembered_.end()) {
    // The folder may have been removed or moved away since it was opened.
    if (isAt(root_->number(), folder.c_str(), *found->second)) return found->second;
    remembered_.erase(found);
  }
  FileDescriptor opened{openFolderBeneath(root_->number(), folder)};
  if (!opened.isOpen() && lacksDescriptors(errno)) {
    remembered_.clear();
    opened = FileDescriptor{openFolderBeneath(root_->number(), folder)};
  }
  if (!opened.isOpen()) fail(operation, folder, errno);
  if (remembered_.size() >= rememberedFolders()) remembered_.clear();
  return remembered_[folder] = std::make_shared<FileDescriptor>(std::move(opened));
}

std::optional<FileStatus> PosixFolder::status(const std::string& path) const {
  const auto parent = parentIfAny(path, FileOperation::status);
  if (parent == nullptr) return std::nullopt;
  struct stat raw{};
  if (::fstatat(parent->number(), lastPathComponent(path).c_str(), &raw, AT_SYMLINK_NOFOLLOW) ==
      0) {
    return statusOf(raw);
  }
  if (errno == ENOENT) return std::nullopt;
  fail(FileOperation::status, path, errno);
}

std::unique_ptr<WritableFile> PosixFolder::createFile(const std::string& path) {
  removeFile(path);
  return std::make_unique<PosixWritableFile>(newFile(path, O_WRONLY), path_ + "/" + path);
}

FileDescriptor PosixFolder::createDescriptor(const std::string& path) {
  return newFile(path, O_RDWR);
}

FileDescriptor PosixFolder::newFile(const std::string& path, int access) const {
  const auto parent = parentOf(path, FileOperation::create);
  FileDescriptor file{::openat(parent->number(), lastPathComponent(path).c_str(),
                               access | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666 & access_)};
  if (!file.isOpen()) fail(FileOperation::create, path, errno);
  return file;
}

std::unique_ptr<ByteReader> PosixFolder::openFile(const std::string& path) const {
  return std::make_unique<PosixFileReader>(openDescriptor(path), path_ + "/" + path);
}

FileDescriptor PosixFolder::openDescriptor(const std::string& path) const {
  const auto parent = parentOf(path, FileOperation::open);
  FileDescriptor file{::openat(parent->number(), lastPathComponent(path).c_str(),
                               O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)};
  if (!file.isOpen()) fail(FileOperation::open, path, errno);
  struct stat raw{};
  if (::fstat(file.number(), &raw) != 0) fail(FileOperation::status, path, errno);
  if (!S_ISREG(raw.st_mode)) fail(FileOperation::open, path, EINVAL);
  return file;
}

std::string PosixFolder::readFile(const std::string& path, std::uint64_t maxBytes) const {
  const auto file = openFile(path);
  // A file that is too large is refused before it is read.
  if (const auto now = status(path); now && now->size > maxBytes)
    fail(FileOperation::read, path, EFBIG);
  std::string content;
  std::array<char, 65536> buffer;
  for (std::size_t count = 0; (count = file->read(buffer)) > 0;) {
    if (content.size() + count > maxBytes) fail(FileOperation::read, path, EFBIG);
    content.append(buffer.data(), count);
  }
  return content;
}

void PosixFolder::setModificationTime(const std::string& path, Instant time) {
  const auto parent = parentOf(path, FileOperation::write);
  const auto times = modificationTimes(time);
  if (::utimensat(parent->number(), lastPathComponent(path).c_str(), times.data(),
                  AT_SYMLINK_NOFOLLOW) != 0) {
    fail(FileOperation::write, path, errno);
  }
}

void PosixFolder::makeFolders(const std::string& path) {
  if (path.empty()) return;
  checkPath(path, FileOperation::makeFolder);
  try {
    openRemembered(path, FileOperation::open);
    return;
  } catch (const FileError& error) {
    if (error.code() != ENOENT) throw;
  }
  makeFolders(parentPath(path));
  const auto parent = parentOf(path, FileOperation::makeFolder);
  if (::mkdirat(parent->number(), lastPathComponent(path).c_str(), 0777 & access_) != 0 &&
      errno != EEXIST) {
    fail(FileOperation::makeFolder, path, errno);
  }
  // Fails if the existing entry is not a folder, or is a link.
  openRemembered(path, FileOperation::makeFolder);
}

bool PosixFolder::moveByLink(int fromFolder, const std::string& from, int toFolder,
                             const std::string& to) const {
  if (::linkat(fromFolder, from.c_str(), toFolder, to.c_str(), 0) == 0) {
    if (::unlinkat(fromFolder, from.c_str(), 0) != 0) fail(FileOperation::rename, from, errno);
    return true;
  }
  if (errno == EEXIST) return false;
  // The volume has no hard links. Check, then rename: no other process writes to a locked folder.
  struct stat raw{};
  if (::fstatat(toFolder, to.c_str(), &raw, AT_SYMLINK_NOFOLLOW) == 0) return false;
  // Only a name that is certainly free may be taken: this call would replace a file.
  if (errno != ENOENT) fail(FileOperation::rename, to, errno);
  if (::renameat(fromFolder, from.c_str(), toFolder, to.c_str()) == 0) return true;
  fail(FileOperation::rename, to, errno);
}

bool PosixFolder::renameWithoutReplacing(const std::string& from, const std::string& to) {
  const auto fromFolder = parentOf(from, FileOperation::rename);
  const auto toFolder = parentOf(to, FileOperation::rename);
  const std::string fromName = lastPathComponent(from);
  const std::string toName = lastPathComponent(to);
  if (::renameat2(fromFolder->number(), fromName.c_str(), toFolder->number(), toName.c_str(),
                  RENAME_NOREPLACE) == 0) {
    return true;
  }
  if (errno == EEXIST) return false;
  if (errno == EINVAL || errno == ENOSYS || errno == ENOTSUP) {
    return moveByLink(fromFolder->number(), fromName, toFolder->number(), toName);
  }
  fail(FileOperation::rename, to, errno);
}

void PosixFolder::renameReplacing(const std::string& from, const std::string& to) {
  const auto fromFolder = parentOf(from, FileOperation::rename);
  const auto toFolder = parentOf(to, FileOperation::rename);
  if (::renameat(fromFolder->number(), lastPathComponent(from).c_str(), toFolder->number(),
                 lastPathComponent(to).c_str()) != 0) {
    fail(FileOperation::rename, to, errno);
  }
}

void PosixFolder::removeFile(const std::string& path) {
  const auto parent = parentIfAny(path, FileOperation::remove);
  if (parent == nullptr) return;
  if (::unlinkat(parent->number(), lastPathComponent(path).c_str(), 0) != 0 && errno != ENOENT) {
    fail(FileOperation::remove, path, errno);
  }
}

int PosixFolder::removeEntry(int folder, const std::string& name) {
  if (::unlinkat(folder, name.c_str(), 0) == 0 || errno == ENOENT) return 0;
  if (errno != EISDIR && errno != EPERM) return errno;
  const int refusal = errno;
  int failure = 0;
  {
    const FileDescriptor inner{::openat(folder, name.c_str(), folderFlags | O_NOFOLLOW)};
    if (!inner.isOpen()) return refusal == EPERM ? refusal : errno;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries{::fdopendir(openAgain(inner.number())),
                                                      ::closedir};
    if (entries == nullptr) return errno;
    std::vector<std::string> names;
    while (const struct dirent* const entry = ::readdir(entries.get()))
      names.emplace_back(entry->d_name);
    for (const std::string& each : names) {
      if (each == "." || each == "..") continue;
      const int code = removeEntry(inner.number(), each);
      if (failure == 0) failure = code;
    }
  }
  if (::unlinkat(folder, name.c_str(), AT_REMOVEDIR) == 0 || errno == ENOENT) return failure;
  return failure != 0 ? failure : errno;
}

void PosixFolder::removeAll(const std::string& path) {
  const auto parent = parentIfAny(path, FileOperation::remove);
  if (parent == nullptr) return;
  const int code = removeEntry(parent->number(), lastPathComponent(path));
  if (code != 0) fail(FileOperation::remove, path, code);
}

void PosixFolder::syncEntries(const std::string& folder) {
  const auto opened = openRemembered(folder, FileOperation::sync);
  // Some volumes cannot sync a folder and report EINVAL; there is no other way to sync it there.
  if (::fsync(opened->number()) != 0 && errno != EINVAL) fail(FileOperation::sync, folder, errno);
}

void PosixFolder::syncVolume() {
  if (::syncfs(root_->number()) != 0) fail(FileOperation::sync, "", errno);
  // A volume that became read-only after an error has nothing to sync, and says no more.
  struct statvfs raw{};
  if (::fstatvfs(root_->number(), &raw) == 0 && (raw.f_flag & ST_RDONLY) != 0) {
    fail(FileOperation::sync, "", EROFS);
  }
}

std::vector<UnreadableFolder> PosixFolder::visitAll(const Visitor& visitor) const {
  return FolderListing::visitAll(root_->number(), path_, visitor);
}

std::vector<std::string> PosixFolder::names() const {
  auto result = FolderListing::namesIn(openAgain(root_->number()), path_);
  std::sort(result.begin(), result.end());
  return result;
}

void PosixFolder::checkWritable() const {
  if (::faccessat(root_->number(), ".", W_OK | X_OK, AT_EACCESS) != 0) {
    fail(FileOperation::create, "", errno);
  }
}

bool PosixFolder::exists() const { return isAt(AT_FDCWD, path_.c_str(), *root_); }

std::uint64_t PosixFolder::freeBytes() const {
  struct statvfs raw{};
  if (::fstatvfs(root_->number(), &raw) != 0) fail(FileOperation::status, "", errno);
  if (raw.f_blocks == 0) return unknownFreeBytes;
  return static_cast<std::uint64_t>(raw.f_bavail) * raw.f_frsize;
}

bool PosixFolder::lock() {
  // A process that only checks whether the folder is in use holds the lock for a moment.
  for (int attempt = 1;; ++attempt) {
    isLocked_ = ::flock(root_->number(), LOCK_EX | LOCK_NB) == 0;
    if (isLocked_ || errno != EWOULDBLOCK) return true;
    if (attempt == lockAttempts) return false;
    std::this_thread::sleep_for(lockPause);
  }
}

FileDescriptor openRoot(const std::string& path) {
  FileDescriptor root{::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
  if (!root.isOpen()) throw FileError{FileOperation::open, path, errno};
  return root;
}

}  // namespace

std::unique_ptr<Folder> openFolder(const std::string& path) {
  return std::make_unique<PosixFolder>(openRoot(path), path, 0777);
}

std::unique_ptr<Folder> openPrivateFolder(const std::string& path) {
  makePrivateFolder(path);
  return std::make_unique<PosixFolder>(openRoot(path), path, S_IRWXU);
}

}  // namespace tavrix
