#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/files/Folder.h"
#include "media/SnapshotItem.h"

namespace tavrix {

/// An entry of a folder; of a link, its own status.
struct FolderEntry {
  std::string name;
  FileStatus status;
  /// Why nothing is known of it but name and type, and the type may be a guess: the system's code
  /// (errno); 0 where all is known.
  int failure = 0;
};

/// A folder that stands for a phone: a mounted phone, a memory card, a copy of its folder DCIM.
/// What lies in it is listed and never changed.
namespace SourceFolder {

/// Why something in the folder is no file of the catalogue.
enum class Reason {
  hidden,            ///< its name begins with a full stop
  placeholder,       ///< it stands for a file that is only in a cloud
  link,              ///< a symbolic link; links are not followed
  special,           ///< a pipe, a socket, a device
  unreadableFolder,  ///< a folder that cannot be listed
  unreadableFile,    ///< the system does not tell what it is
  tooDeep,           ///< a folder below more folders than a phone has
  vanished,          ///< it was gone when it was to be read
};

struct LeftOut {
  std::string path;
  Reason reason = Reason::hidden;

  /// Whether nobody has seen what there is to copy.
  bool isUnseen() const;

  friend bool operator==(const LeftOut&, const LeftOut&) = default;
};

/// The files of the catalogue by folder, then by name, in the order of their bytes.
struct Listing {
  /// What a listing can tell of each: name, folder, kind, size, and the modification time as
  /// itemDate.
  std::vector<SnapshotItem> items;
  std::vector<std::string>
      paths;  ///< of the same files, below the folder listed, as the disk spells them
  std::vector<LeftOut> leftOut;
  bool isComplete = true;  ///< false when it was stopped

  friend bool operator==(const Listing&, const Listing&) = default;
};

/// The folder whose content is the catalogue: DCIM in a folder that holds it; the folder itself
/// when it is named so, holds folders such as "100APPLE" or is one of them. Nothing for any other
/// folder. Throws FileError when it cannot be listed.
std::optional<std::string> catalogueFolder(const std::string& path);
/// Where a folder holds several of them ("DCIM" beside "dcim"), the paths of those that
/// catalogueFolder() does not give. Throws FileError when it cannot be listed.
std::vector<std::string> otherCatalogueFolders(const std::string& path);
/// Whether a name is one that cameras give their folders (DCF 2.0): three digits from 100 on and
/// five letters, digits or underscores, as in "100APPLE" and "202605__".
bool isCameraFolderName(std::string_view name);

/// All files below a folder, of which several are looked at side by side. Throws FileError when the
/// folder itself cannot be listed.
Listing list(const std::string& folder, const std::stop_token& stop = {});
/// The same of a place that is no folder of the disk: `entries` gives what lies in a folder below
/// it ("" for itself), sorted by name, and throws FileError. It is called from one thread.
Listing list(const std::function<std::vector<FolderEntry>(const std::string& folder)>& entries,
             const std::stop_token& stop = {});

/// What the metadata cache of a folder goes by: the same for the same place.
std::string phoneKey(const std::string& folder);

/// Folders below folders that are listed.
inline constexpr int maxDepth = 16;

}  // namespace SourceFolder

/// What lies directly in a folder, sorted by name; a part of it when it was stopped. With
/// `followsLink` the folder may be reached by a link at its path. Throws FileError, also for a
/// folder that keeps all that is in it closed.
std::vector<FolderEntry> folderEntries(const std::string& path, bool followsLink,
                                       const std::stop_token& stop = {});

}  // namespace tavrix
