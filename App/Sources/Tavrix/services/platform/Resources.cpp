#include "services/platform/Resources.h"

#include <filesystem>

namespace tavrix {
namespace {

namespace fs = std::filesystem;

/// Returns the folder of the running program.
fs::path programFolder() {
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error).parent_path();
}

/// Returns `built`, or `installed` if only that exists.
std::string whichever(const fs::path& built, const fs::path& installed) {
  std::error_code error;
  const bool isInstalled = !fs::exists(built, error) && fs::exists(installed, error);
  return (isInstalled ? installed : built).string();
}

}  // namespace

std::string resourcePath(const std::string& name) {
  const fs::path folder = programFolder();
  return whichever(folder / "Resources" / name, folder.parent_path() / "share" / "tavrix" / name);
}

std::string helperPath(const std::string& name) {
  const fs::path folder = programFolder();
  return whichever(folder / name, folder.parent_path() / "libexec" / "tavrix" / name);
}

}  // namespace tavrix
