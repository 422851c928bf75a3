#include "services/HistoryFolder.h"

#include <cerrno>
#include <filesystem>

#include "foundation/files/FileError.h"
#include "settings/StateFolder.h"

namespace tavrix {
namespace {

constexpr const char* folderName = "history";

}  // namespace

HistoryFolder HistoryFolder::create(const std::string& stateFolder, Log& log) {
  return {openStateFolder(stateFolder, folderName), log};
}

std::optional<HistoryFolder> HistoryFolder::open(const std::string& stateFolder, Log& log) {
  try {
    return HistoryFolder{openFolder(stateFolder + "/" + folderName), log};
  } catch (const FileError& error) {
    if (error.code() == ENOENT || error.code() == ENOTDIR) return std::nullopt;
    throw;
  }
}

std::string absolutePath(const std::string& path) {
  std::error_code error;
  const auto absolute = std::filesystem::weakly_canonical(path, error);
  return error ? std::filesystem::absolute(path).lexically_normal().string() : absolute.string();
}

}  // namespace tavrix
