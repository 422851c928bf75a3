#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// What a folder is told apart by, whatever leads to it: another volume at the same path is
/// another.
struct FolderIdentity {
  std::uint64_t volume = 0;
  std::uint64_t folder = 0;

  friend bool operator==(const FolderIdentity&, const FolderIdentity&) = default;
};
/// Nothing where there is no folder, or nobody tells.
std::optional<FolderIdentity> folderIdentity(const std::string& path);

/// A file system, or a folder of one, at a path of this computer.
struct Mount {
  std::string point;  ///< the path
  std::string place;  ///< the disk's number and the folder's path on it: "8:1/home"

  friend bool operator==(const Mount&, const Mount&) = default;
};

/// The mounts of this process in the order in which they were made; none where nobody tells.
std::vector<Mount> readMounts();
/// Reads the list of the system's form, one line each (proc(5), /proc/pid/mountinfo). What is none
/// is passed over.
std::vector<Mount> parseMounts(std::string_view mountinfo);

/// Whether a folder is another one or lies in it on the disk, whatever mounts lead there: a folder
/// inside the other may be mounted elsewhere, or stand inside it by a mount. Both are full paths
/// without links.
bool liesInByMounts(const std::string& path, const std::string& folder,
                    const std::vector<Mount>& mounts);

}  // namespace tavrix
