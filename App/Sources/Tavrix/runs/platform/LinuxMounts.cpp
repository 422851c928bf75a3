#include <sys/stat.h>

#include <array>

#include "foundation/files/FileError.h"
#include "foundation/files/FileReader.h"
#include "runs/Mounts.h"

namespace tavrix {

std::optional<FolderIdentity> folderIdentity(const std::string& path) {
  struct stat status{};
  if (::stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return std::nullopt;
  return FolderIdentity{status.st_dev, status.st_ino};
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
