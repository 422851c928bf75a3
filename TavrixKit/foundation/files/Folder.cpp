#include "foundation/files/Folder.h"

#include <algorithm>
#include <string_view>

namespace tavrix {

bool liesInside(const std::string& path, const std::vector<UnreadableFolder>& folders) {
  if (folders.empty()) return false;
  for (std::size_t end = path.find('/');; end = path.find('/', end + 1)) {
    const auto part = std::string_view{path}.substr(0, end);
    const auto found = std::lower_bound(
        folders.begin(), folders.end(), part,
        [](const UnreadableFolder& folder, std::string_view other) { return folder.path < other; });
    if (found != folders.end() && found->path == part) return true;
    if (end == std::string::npos) return false;
  }
}

}  // namespace tavrix
