#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "device/SourceFolder.h"
#include "foundation/files/FileError.h"
#include "foundation/files/platform/FileDescriptor.h"
#include "foundation/files/platform/PosixStatus.h"

namespace tavrix {
namespace {

/// What a listing alone tells of an entry.
FileStatus::Type typeOf(const struct dirent& entry) {
  using Type = FileStatus::Type;
  switch (entry.d_type) {
    case DT_REG:
    case DT_UNKNOWN:
      return Type::file;
    case DT_DIR:
      return Type::folder;
    case DT_LNK:
      return Type::link;
    default:
      return Type::other;
  }
}

/// Nothing for what is gone since the listing: it was not there.
std::optional<FolderEntry> entryOf(int folder, const struct dirent& entry) {
  struct stat raw{};
  if (::fstatat(folder, entry.d_name, &raw, AT_SYMLINK_NOFOLLOW) == 0) {
    return FolderEntry{entry.d_name, statusOf(raw)};
  }
  if (errno == ENOENT) return std::nullopt;
  return FolderEntry{entry.d_name, {typeOf(entry), 0, {}}, errno};
}

/// Whether the folder tells the names of what is in it and nothing more.
bool keepsEntriesClosed(const std::vector<FolderEntry>& entries) {
  return !entries.empty() &&
         std::all_of(entries.begin(), entries.end(),
                     [](const FolderEntry& entry) { return entry.failure == EACCES; });
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
    if (name != "." && name != "..") {
      if (auto read = entryOf(number, *entry)) result.push_back(*std::move(read));
    }
    errno = 0;
  }
  // Half a listing would make files that are there look missing.
  if (errno != 0) throw FileError{FileOperation::list, path, errno};
  if (keepsEntriesClosed(result)) throw FileError{FileOperation::list, path, EACCES};
  std::sort(result.begin(), result.end(),
            [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
  return result;
}

}  // namespace tavrix
