#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// Identifies a folder independently of the path to it, as long as its volume is mounted. Another
/// volume mounted at the same time has another identity; a later one may get the same.
struct FolderIdentity {
  std::uint64_t volume = 0;
  std::uint64_t folder = 0;

  friend bool operator==(const FolderIdentity&, const FolderIdentity&) = default;
};
/// Returns nullopt if the path is not a folder or the system does not report one.
std::optional<FolderIdentity> folderIdentity(const std::string& path);

/// Returns true if the volume of a folder that was at `path` is not there any more: the path, or
/// the nearest folder above it that exists, is of another volume or does not answer. Returns false
/// if the folder alone was removed or moved.
/// `path` must be absolute and free of links.
bool isVolumeAway(const std::string& path, const FolderIdentity& identity);

/// A file system, or a folder of one, mounted at a path of this computer.
struct Mount {
  std::string point;  ///< the mount point
  std::string place;  ///< device number and the path on that device: "8:1/home"

  friend bool operator==(const Mount&, const Mount&) = default;
};

/// Returns the mounts of this process in the order of mounting. Returns none if the system does not
/// report them.
std::vector<Mount> readMounts();
/// Parses the format of /proc/pid/mountinfo, one mount per line (proc(5)). Skips malformed lines.
std::vector<Mount> parseMounts(std::string_view mountinfo);

/// Returns true if, on disk, `path` is `folder` or inside it, through any mounts: a subfolder of
/// `folder` may be mounted elsewhere, or another folder may be mounted inside it. Both paths must
/// be absolute and free of links.
bool liesInByMounts(const std::string& path, const std::string& folder,
                    const std::vector<Mount>& mounts);

}  // namespace tavrix
