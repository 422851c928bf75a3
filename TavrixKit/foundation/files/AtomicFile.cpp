#include "foundation/files/AtomicFile.h"

#include "foundation/files/FileError.h"

namespace tavrix {

void writeFileAtomically(Folder& folder, const std::string& path, std::string_view content) {
  writeFileAtomically(folder, path,
                      [&](WritableFile& file) { file.append(std::as_bytes(std::span{content})); });
}

void writeFileAtomically(Folder& folder, const std::string& path,
                         const std::function<void(WritableFile&)>& write) {
  const std::string temporary = path + ".part";
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
      // The first failure is the one to tell.
    }
    throw;
  }
  folder.syncEntries(parentPath(path));
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
