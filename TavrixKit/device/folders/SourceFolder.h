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

/// An entry of a folder. The status of a link is that of the link itself.
struct FolderEntry {
  std::string name;
  FileStatus status;
  /// The system's error code (errno) if the status could not be read, else 0. If it is not 0, only
  /// name and type are known, and the type may be a guess.
  int failure = 0;
};

/// A folder that stands in for a phone: a mounted phone, a memory card, a copy of its DCIM folder.
/// Its content is listed and never changed.
namespace SourceFolder {

/// Why an entry of the folder is not a file of the catalogue.
enum class Reason {
  hidden,            ///< its name begins with a full stop
  placeholder,       ///< it stands for a file that exists only in a cloud
  link,              ///< a symbolic link; links are not followed
  special,           ///< a pipe, a socket, a device
  unreadableFolder,  ///< a folder that cannot be listed
  unreadableFile,    ///< the system does not report its status
  tooDeep,           ///< a folder nested deeper than on any phone
  tooMany,           ///< more folders or entries than any phone has
  tooLarge,          ///< a file larger than any phone can hold
  longName,          ///< a name longer than any volume accepts
  vanished,          ///< it was gone before it could be read
};

struct LeftOut {
  std::string path;
  Reason reason = Reason::hidden;

  /// Returns true if there may be files to copy that could not be seen.
  bool isUnseen() const;

  friend bool operator==(const LeftOut&, const LeftOut&) = default;
};

/// The files of the catalogue by folder, then by name, in byte order.
struct Listing {
  /// The files with the fields that a listing provides: name, folder, kind, size, and the
  /// modification time as itemDate.
  std::vector<SnapshotItem> items;
  std::vector<std::string>
      paths;  ///< of the same files, below the listed folder, as spelled on the disk
  std::vector<LeftOut> leftOut;
  bool isComplete = true;  ///< false if listing was stopped

  friend bool operator==(const Listing&, const Listing&) = default;
};

/// Returns the folder whose content is the catalogue: DCIM in `path` if it exists, or `path` itself
/// if it is named DCIM, contains folders such as "100APPLE" or is one of them. Returns nullopt for
/// any other folder. Throws FileError if the folder cannot be listed.
std::optional<std::string> catalogueFolder(const std::string& path);
/// Returns the paths of further DCIM folders in `path` ("dcim" beside "DCIM"), which
/// catalogueFolder() does not return. Throws FileError if the folder cannot be listed.
std::vector<std::string> otherCatalogueFolders(const std::string& path);
/// Returns true for a name that cameras give their folders (DCF 2.0): three digits from 100 on and
/// five letters, digits or underscores, as in "100APPLE" and "202605__".
bool isCameraFolderName(std::string_view name);

/// Lists all files below a folder, several folders at the same time. Throws FileError if the folder
/// itself cannot be listed.
Listing list(const std::string& folder, const std::stop_token& stop = {});
/// As above, for a place that is not a folder on the disk. `entries` returns the entries of a
/// folder below it ("" for the place itself), sorted by name, and throws FileError. It is called
/// from one thread.
Listing list(const std::function<std::vector<FolderEntry>(const std::string& folder)>& entries,
             const std::stop_token& stop = {});

/// Returns the key of the metadata cache of a folder; all paths of the same folder give the same
/// key.
std::string phoneKey(const std::string& folder);

/// The number of levels of nested folders that are listed.
inline constexpr int maxDepth = 16;
/// Limits of a whole source. A phone or a card that claims more is damaged or lies; a library on a
/// disk may well have tens of thousands of folders.
inline constexpr std::size_t maxFolders = 200'000;
inline constexpr std::size_t maxEntries = 5'000'000;
/// Limits of one file: 64 TiB, and the length of its name in bytes. Volumes of phones and cards
/// accept 255 characters, at most 1020 bytes.
inline constexpr std::uint64_t maxFileBytes = std::uint64_t{1} << 46U;
inline constexpr std::size_t maxNameBytes = 1020;

}  // namespace SourceFolder

/// Returns the entries of a folder, sorted by name; only some of them if `stop` was requested. With
/// `followsLink`, `path` may be a link to the folder. Throws FileError, also for a folder that
/// denies access to all of its entries.
std::vector<FolderEntry> folderEntries(const std::string& path, bool followsLink,
                                       const std::stop_token& stop = {});

}  // namespace tavrix
