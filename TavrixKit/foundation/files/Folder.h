#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "foundation/Time.h"
#include "foundation/json/JsonReader.h"

namespace tavrix {

class FileDescriptor;

struct FileStatus {
  enum class Type { file, folder, link, other };

  Type type = Type::file;
  std::uint64_t size = 0;  ///< bytes
  Instant modified;

  friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

/// A new file that is written from its beginning. Every member throws FileError. If the object is
/// destroyed without close(), the file is closed and keeps its current content.
class WritableFile {
 public:
  virtual ~WritableFile() = default;
  virtual void append(std::span<const std::byte> bytes) = 0;
  /// Replaces bytes that were already appended, from `offset` on.
  virtual void overwrite(std::uint64_t offset, std::span<const std::byte> bytes) = 0;
  /// Asks the system to start writing the bytes to stable storage, without waiting for it.
  virtual void startWriteback() = 0;
  /// Waits until the content and the status are on stable storage.
  virtual void sync() = 0;
  virtual void close() = 0;
};

/// A folder whose entries may not be listed, or an entry whose status the system does not return.
struct UnreadableFolder {
  std::string path;
  int code = 0;  ///< the system's error code (errno)

  friend bool operator==(const UnreadableFolder&, const UnreadableFolder&) = default;
};
/// Returns true if `path` is one of the folders or is inside one. `folders` must be sorted by path.
bool liesInside(const std::string& path, const std::vector<UnreadableFolder>& folders);

/// An open folder; all access to its content goes through it. Paths are relative, with "/" between
/// parts. A path that leads out of the folder or through a symbolic link is refused with EXDEV, a
/// path with a NUL with EINVAL. A link at the last part is never followed. Members throw FileError
/// unless stated otherwise; all are safe to call from several threads.
class Folder {
 public:
  virtual ~Folder() = default;

  /// Returns the path of the folder itself, for the user and for programs that need a path.
  virtual const std::string& path() const = 0;

  /// Returns nullopt if nothing has this path.
  virtual std::optional<FileStatus> status(const std::string& path) const = 0;
  /// Creates a file. An existing file of this name is removed first.
  virtual std::unique_ptr<WritableFile> createFile(const std::string& path) = 0;
  /// Returns the whole content of a regular file. Fails with EFBIG if the file is larger than
  /// `maxBytes` bytes.
  virtual std::string readFile(const std::string& path, std::uint64_t maxBytes) const = 0;
  /// Opens a regular file for reading piece by piece, from its beginning.
  virtual std::unique_ptr<ByteReader> openFile(const std::string& path) const = 0;
  /// Opens a regular file for reading by a library or another program. The caller includes
  /// foundation/files/platform/FileDescriptor.h.
  virtual FileDescriptor openDescriptor(const std::string& path) const = 0;
  /// Creates a file that a library or another program writes and that may be read as well. Fails
  /// with EEXIST if something has this name.
  virtual FileDescriptor createDescriptor(const std::string& path) = 0;
  /// Sets the modification time of an existing file.
  virtual void setModificationTime(const std::string& path, Instant time) = 0;
  /// Creates the folder and its missing parents. It is not an error if the folder exists.
  virtual void makeFolders(const std::string& path) = 0;
  /// Renames atomically. If the new name is already taken, returns false and changes nothing.
  virtual bool renameWithoutReplacing(const std::string& from, const std::string& to) = 0;
  /// Renames atomically and replaces an existing file of the new name.
  virtual void renameReplacing(const std::string& from, const std::string& to) = 0;
  /// Removes a file. It is not an error if it does not exist.
  virtual void removeFile(const std::string& path) = 0;
  /// Removes a folder with its whole content. If `path` is a link, removes the link only. It is not
  /// an error if nothing has this path. If an entry cannot be removed, goes on with the others and
  /// throws the first failure at the end.
  virtual void removeAll(const std::string& path) = 0;

  /// Waits until the entries of a folder ("" for this one) are on stable storage.
  virtual void syncEntries(const std::string& folder) = 0;
  /// Waits until everything written to this folder's volume is on stable storage.
  virtual void syncVolume() = 0;

  /// Visits all files and folders below this folder, in no particular order. Does not follow links.
  /// Omits entries that disappear during the visit. Returns the folders that may not be read,
  /// sorted by path; their content was not visited.
  using Visitor = std::function<void(const std::string& path, const FileStatus& status)>;
  virtual std::vector<UnreadableFolder> visitAll(const Visitor& visitor) const = 0;
  /// Returns the names directly in this folder, sorted.
  virtual std::vector<std::string> names() const = 0;

  /// Throws FileError for `create` if no file can be created in this folder: the permissions do not
  /// allow it, or the volume is read-only.
  virtual void checkWritable() const = 0;

  /// Returns false if the folder was removed or moved away, or its volume is gone. Never throws.
  virtual bool exists() const = 0;
  /// Returns the number of bytes that can still be written, or `unknownFreeBytes` if the volume
  /// does not report it, as some shares do not.
  virtual std::uint64_t freeBytes() const = 0;
  static constexpr std::uint64_t unknownFreeBytes = std::uint64_t{1} << 62U;
  /// Locks the folder for this process until the object is destroyed. Returns false if another
  /// process keeps the lock for longer than a moment. If the volume has no locks, returns true.
  virtual bool lock() = 0;
  /// Returns true if this object holds the lock. Returns false also if the volume has no locks.
  virtual bool isLocked() const = 0;
};

/// Opens an existing folder of the disk. Follows a symbolic link. Throws FileError.
std::unique_ptr<Folder> openFolder(const std::string& path);

}  // namespace tavrix
