#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "device/SourceFolder.h"
#include "foundation/files/FileError.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {
namespace {

FileStatus statusOf(const struct stat& raw) {
  using Type = FileStatus::Type;
  const Type type = S_ISREG(raw.st_mode)   ? Type::file
                    : S_ISDIR(raw.st_mode) ? Type::folder
                    : S_ISLNK(raw.st_mode) ? Type::link
                                           : Type::other;
  const std::chrono::sys_time<std::chrono::nanoseconds> modified{
      std::chrono::seconds{raw.st_mtim.tv_sec} + std::chrono::nanoseconds{raw.st_mtim.tv_nsec}};
  return {type, static_cast<std::uint64_t>(raw.st_size),
          std::chrono::floor<std::chrono::milliseconds>(modified)};
}

}  // namespace

std::vector<FolderEntry> folderEntries(const std::string& path, bool followsLink,
                                       const std::stop_token& stop) {
  FileDescriptor folder{
      ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | (followsLink ? 0 : O_NOFOLLOW))};
  if (!folder.isOpen()) throw FileError{FileOperation::open, path, errno};
  const int number = folder.number();
  const std::unique_ptr<DIR, int (*)(DIR*)> entries{::fdopendir(number), ::closedir};
  if (entries == nullptr) throw FileError{FileOperation::list, path, errno};
  folder.release();
  std::vector<FolderEntry> result;
  errno = 0;
  while (const struct dirent* const entry = ::readdir(entries.get())) {
    if (stop.stop_requested()) break;
    const std::string_view name = entry->d_name;
    struct stat raw{};
    // What is gone between the listing and here was not there.
    const bool isThere = name != "." && name != ".." &&
                         ::fstatat(number, entry->d_name, &raw, AT_SYMLINK_NOFOLLOW) == 0;
    if (isThere) result.push_back({std::string{name}, statusOf(raw)});
    errno = 0;
  }
  // Half a listing would make files that are there look missing.
  if (errno != 0) throw FileError{FileOperation::list, path, errno};
  std::sort(result.begin(), result.end(),
            [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
  return result;
}

}  // namespace tavrix
