#include "foundation/files/AtomicFile.h"

#include "foundation/Uuid.h"
#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

constexpr std::string_view temporaryEnding = ".part";
constexpr std::size_t tagDigits = 12;

/// Returns the offset of the extension's dot, or the length of the path if there is no extension.
std::size_t extensionBegin(std::string_view path) {
  const auto point = path.rfind('.');
  const auto slash = path.rfind('/');
  const bool isInName = point != std::string_view::npos &&
                        (slash == std::string_view::npos || point > slash + 1) && point > 0;
  return isInName ? point : path.size();
}

/// Keeps the target's extension in the name, so that clean-up by extension finds the file.
std::string temporaryPath(const std::string& path) {
  const std::size_t extension = extensionBegin(path);
  const std::string random = randomUuid().text();
  return path.substr(0, extension) + "." + random.substr(random.size() - tagDigits) +
         path.substr(extension) + std::string{temporaryEnding};
}

}  // namespace

void writeFileAtomically(Folder& folder, const std::string& path, std::string_view content) {
  writeFileAtomically(folder, path,
                      [&](WritableFile& file) { file.append(std::as_bytes(std::span{content})); });
}

void writeFileAtomically(Folder& folder, const std::string& path,
                         const std::function<void(WritableFile&)>& write) {
  const std::string temporary = temporaryPath(path);
  try {
    const auto file = folder.createFile(temporary);
    write(*file);
    file->sync();
    file->close();
    folder.renameReplacing(temporary, path);
  } catch (...) {
    try {
      folder.removeFile(temporary);
    } catch (const FileError&) {
      // The first failure is the one to report.
    }
    throw;
  }
  folder.syncEntries(parentPath(path));
}

bool isTemporaryOf(std::string_view name, std::string_view target) {
  const std::size_t extension = extensionBegin(target);
  const std::string_view stem = target.substr(0, extension);
  if (name.size() != target.size() + 1 + tagDigits + temporaryEnding.size()) return false;
  if (!name.starts_with(stem) || !name.ends_with(temporaryEnding)) return false;
  name.remove_prefix(stem.size());
  name.remove_suffix(temporaryEnding.size());
  return name.front() == '.' && name.substr(1 + tagDigits) == target.substr(extension) &&
         name.substr(1, tagDigits).find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

void removeLeftOvers(Folder& folder, const std::string& target) noexcept {
  try {
    // Both times come from the volume, so this computer's clock does not matter.
    const auto written = folder.status(target);
    if (!written) return;
    for (const std::string& name : folder.names()) {
      if (!isTemporaryOf(name, target)) continue;
      const auto status = folder.status(name);
      const bool isOld = status && status->modified < written->modified - std::chrono::hours{1};
      if (isOld && status->type == FileStatus::Type::file) folder.removeFile(name);
    }
  } catch (...) {
    // A file that remains only takes space; the next writer tries again.
    return;
  }
}

std::string parentPath(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? "" : path.substr(0, slash);
}

std::string lastPathComponent(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool isSafePathComponent(std::string_view name) {
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of(std::string_view{"/\0", 2}) == std::string_view::npos;
}

}  // namespace tavrix
