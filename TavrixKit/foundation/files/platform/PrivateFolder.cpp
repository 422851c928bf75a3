#include "device/thumbnails/PrivateFolder.h"

#include <filesystem>

#include "foundation/files/FileError.h"

namespace tavrix {

void makePrivateFolder(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  if (fs::is_directory(path, error)) return;
  fs::create_directories(path, error);
  if (!error) fs::permissions(path, fs::perms::owner_all, error);
  if (error) throw FileError{FileOperation::makeFolder, path, error.value()};
}

}  // namespace tavrix
