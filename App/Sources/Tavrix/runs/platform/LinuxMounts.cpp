#include <sys/stat.h>

#include <array>
#include <cerrno>

#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "foundation/files/FileReader.h"
#include "runs/Mounts.h"

namespace tavrix {

std::optional<FolderIdentity> folderIdentity(const std::string& path) {
  struct stat status{};
  if (::stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return std::nullopt;
  return FolderIdentity{status.st_dev, status.st_ino};
}

bool isVolumeAway(const std::string& path, const FolderIdentity& identity) {
  struct stat status{};
  for (std::string each = path; !each.empty(); each = parentPath(each)) {
    if (::stat(each.c_str(), &status) == 0) return status.st_dev != identity.volume;
    if (errno == EACCES) return false;
    // A share without its server, or a disk without its cable, is still mounted.
    if (errno != ENOENT && errno != ENOTDIR) return true;
  }
  return ::stat("/", &status) == 0 && status.st_dev != identity.volume;
}

std::vector<Mount> readMounts() {
  constexpr std::size_t maxBytes = std::size_t{1} << 24U;
  try {
    const auto file = openFileForReading("/proc/self/mountinfo");
    std::string text;
    std::array<char, 65536> buffer;
    for (std::size_t count = 0; text.size() < maxBytes && (count = file->read(buffer)) > 0;) {
      text.append(buffer.data(), count);
    }
    return parseMounts(text);
  } catch (const FileError&) {
    return {};
  }
}

}  // namespace tavrix
