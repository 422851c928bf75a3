#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

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
