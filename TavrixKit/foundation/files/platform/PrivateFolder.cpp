#include "foundation/files/PrivateFolder.h"

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "foundation/files/FileError.h"

namespace tavrix {

void makePrivateFolder(const std::string& path) {
  std::error_code error;
  if (path.empty() || std::filesystem::is_directory(path, error)) return;
  makePrivateFolder(std::filesystem::path{path}.parent_path().string());
  if (::mkdir(path.c_str(), S_IRWXU) == 0 || errno == EEXIST) return;
  throw FileError{FileOperation::makeFolder, path, errno};
}

}  // namespace tavrix
