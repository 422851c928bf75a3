#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "device/folders/SourceFolder.h"
#include "foundation/files/FileError.h"
#include "foundation/files/platform/FileDescriptor.h"
#include "foundation/files/platform/PosixStatus.h"

namespace tavrix {
namespace {

/// Returns the type of an entry as far as the listing alone shows it.
FileStatus::Type typeOf(const struct dirent& entry) {
  switch (entry.d_type) {
    case DT_REG:
    case DT_UNKNOWN:
      return FileStatus::Type::file;
    case DT_DIR:
      return FileStatus::Type::folder;
    case DT_LNK:
      return FileStatus::Type::link;
    default:
      return FileStatus::Type::other;
  }
}

/// Returns nullopt for an entry that is gone since the listing: it is treated as absent.
std::optional<FolderEntry> entryOf(int folder, const struct dirent& entry) {
  struct stat raw{};
  if (::fstatat(folder, entry.d_name, &raw, AT_SYMLINK_NOFOLLOW) == 0) {
    return FolderEntry{entry.d_name, statusOf(raw)};
  }
  if (errno == ENOENT) return std::nullopt;
  return FolderEntry{entry.d_name, {typeOf(entry), 0, {}}, errno};
}

/// Returns true if the folder gives the names of its entries and nothing more.
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
  // A partial listing would make existing files look missing.
  if (errno != 0) throw FileError{FileOperation::list, path, errno};
  if (keepsEntriesClosed(result)) throw FileError{FileOperation::list, path, EACCES};
  std::sort(result.begin(), result.end(),
            [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
  return result;
}

}  // namespace tavrix
