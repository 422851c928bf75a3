#include "cli/platform/Resources.h"

#include <filesystem>

namespace tavrix::cli {

std::string resourcePath(const std::string& name) {
  std::error_code error;
  const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  const auto beside = folder / "Resources" / name;
  const auto installed = folder.parent_path() / "share" / "tavrix" / name;
  const bool isInstalled =
      !std::filesystem::exists(beside, error) && std::filesystem::exists(installed, error);
  return (isInstalled ? installed : beside).string();
}

}  // namespace tavrix::cli
