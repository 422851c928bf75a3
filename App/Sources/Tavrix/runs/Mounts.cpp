#include "runs/Mounts.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>

namespace tavrix {
namespace {

namespace fs = std::filesystem;

/// Decodes the escapes of a field: a backslash and three octal digits.
std::string unescaped(std::string_view field) {
  const auto isOctal = [](char c) { return c >= '0' && c <= '7'; };
  std::string text;
  for (std::size_t i = 0; i < field.size(); ++i) {
    const std::string_view digits = field.substr(i + 1, 3);
    const bool isEscape = field[i] == '\\' && digits.size() == 3 &&
                          std::all_of(digits.begin(), digits.end(), isOctal);
    if (!isEscape) {
      text += field[i];
      continue;
    }
    text += static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + (digits[2] - '0'));
    i += digits.size();
  }
  return text;
}

std::optional<Mount> mountOf(std::string_view line) {
  // Mount id, parent id, device, folder on it, mount point, and others.
  std::array<std::string_view, 5> fields;
  for (std::string_view& field : fields) {
    const std::size_t end = std::min(line.find(' '), line.size());
    field = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    if (field.empty()) return std::nullopt;
  }
  if (!fields[3].starts_with('/') || !fields[4].starts_with('/')) return std::nullopt;
  return Mount{unescaped(fields[4]), std::string{fields[2]} + unescaped(fields[3])};
}

/// Returns the rest of a path below a folder. Returns nullopt if the path is not in the folder.
std::optional<fs::path> below(const fs::path& path, const fs::path& folder) {
  auto at = path.begin();
  for (const fs::path& part : folder) {
    if (part.empty()) continue;
    if (at == path.end() || *at != part) return std::nullopt;
    ++at;
  }
  fs::path rest;
  for (; at != path.end(); ++at) rest /= *at;
  return rest;
}

/// Returns where a path is on disk. Uses the deepest mount above it; if several are equal, the last
/// one.
std::optional<fs::path> placeOf(const fs::path& path, const std::vector<Mount>& mounts) {
  std::optional<fs::path> place;
  std::size_t length = 0;
  for (const Mount& mount : mounts) {
    const auto rest = below(path, mount.point);
    if (!rest || mount.point.size() < length) continue;
    length = mount.point.size();
    place = rest->empty() ? fs::path{mount.place} : fs::path{mount.place} / *rest;
  }
  return place;
}

}  // namespace

std::vector<Mount> parseMounts(std::string_view mountinfo) {
  std::vector<Mount> mounts;
  while (!mountinfo.empty()) {
    const std::size_t end = std::min(mountinfo.find('\n'), mountinfo.size());
    if (auto mount = mountOf(mountinfo.substr(0, end))) mounts.push_back(*std::move(mount));
    mountinfo.remove_prefix(std::min(end + 1, mountinfo.size()));
  }
  return mounts;
}

bool liesInByMounts(const std::string& path, const std::string& folder,
                    const std::vector<Mount>& mounts) {
  const auto inner = placeOf(path, mounts);
  const auto outer = placeOf(folder, mounts);
  if (!inner || !outer) return false;
  if (below(*inner, *outer)) return true;
  return std::any_of(mounts.begin(), mounts.end(), [&](const Mount& mount) {
    return below(mount.point, folder) && below(*inner, mount.place);
  });
}

}  // namespace tavrix
