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

struct FileStatus {
  enum class Type { file, folder, link, other };

  Type type = Type::file;
  std::uint64_t size = 0;  ///< bytes
  Instant modified;

  friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

/// A new file that is being written from its beginning. Every member throws FileError. A file that
/// is destroyed without close() is closed and stays as it is.
class WritableFile {
 public:
  virtual ~WritableFile() = default;
  virtual void append(std::span<const std::byte> bytes) = 0;
  /// Replaces bytes that were appended before, from `offset` on.
  virtual void overwrite(std::uint64_t offset, std::span<const std::byte> bytes) = 0;
  virtual void setModificationTime(Instant time) = 0;
  /// Asks the system to begin moving the bytes to stable storage, without waiting for it.
  virtual void startWriteback() = 0;
  /// Returns when bytes and status are on stable storage.
  virtual void sync() = 0;
  virtual void close() = 0;
};

/// A folder whose content may not be listed, or a thing in one that the system says nothing of.
struct UnreadableFolder {
  std::string path;
  int code = 0;  ///< the system's own (errno)

  friend bool operator==(const UnreadableFolder&, const UnreadableFolder&) = default;
};
/// Whether a path is that of one of the folders or lies in one; they are sorted by path.
bool liesInside(const std::string& path, const std::vector<UnreadableFolder>& folders);

/// An open folder, the only way to what lies in it. Paths are relative, with "/" between parts; a
/// path that leads out of the folder or over a symbolic link is refused with EXDEV,
/// one that holds a NUL with EINVAL. Links are never followed at the last part. Members throw
/// FileError unless they say otherwise; all are safe to call from several threads.
class Folder {
 public:
  virtual ~Folder() = default;

  /// The folder's own path, for people and for programs that need one.
  virtual const std::string& path() const = 0;

  /// Nothing when there is no such thing.
  virtual std::optional<FileStatus> status(const std::string& path) const = 0;
  /// Creates a file; one that has the name already is removed first.
  virtual std::unique_ptr<WritableFile> createFile(const std::string& path) = 0;
  /// The whole content of a regular file of at most `maxBytes` bytes; EFBIG for a larger one.
  virtual std::string readFile(const std::string& path, std::uint64_t maxBytes) const = 0;
  /// Reads a regular file from its beginning, piece by piece.
  virtual std::unique_ptr<ByteReader> openFile(const std::string& path) const = 0;
  /// Sets the modification time of an existing file.
  virtual void setModificationTime(const std::string& path, Instant time) = 0;
  /// Creates the folder and those above it that are missing; no error when it is there.
  virtual void makeFolders(const std::string& path) = 0;
  /// Renames atomically. False, and nothing is changed, when something has the new name already.
  virtual bool renameWithoutReplacing(const std::string& from, const std::string& to) = 0;
  /// Renames atomically, replacing what has the new name.
  virtual void renameReplacing(const std::string& from, const std::string& to) = 0;
  /// No error when there is nothing of that name.
  virtual void removeFile(const std::string& path) = 0;
  /// Removes a folder with all that lies in it; of a link, the link. No error when there is nothing
  /// of that name. What stands in the way of the rest is left, and the first failure thrown at the
  /// end.
  virtual void removeAll(const std::string& path) = 0;

  /// Returns when the entries of a folder ("" for this one) are on stable storage.
  virtual void syncEntries(const std::string& folder) = 0;
  /// Returns when all that was written to this folder's volume is on stable storage.
  virtual void syncVolume() = 0;

  /// Visits everything below, links not followed, in no order; what goes meanwhile is left out.
  /// Gives the folders that may not be read, by path: what is in them was not visited.
  using Visitor = std::function<void(const std::string& path, const FileStatus& status)>;
  virtual std::vector<UnreadableFolder> visitAll(const Visitor& visitor) const = 0;
  /// The names directly in this folder, sorted.
  virtual std::vector<std::string> names() const = 0;

  /// False when the folder was removed or moved away, or its volume is gone. Never throws.
  virtual bool exists() const = 0;
  /// Bytes that can still be written.
  virtual std::uint64_t freeBytes() const = 0;
  /// Takes the folder for this process until the object goes; false when another holds it for
  /// longer than a moment. Where the volume knows no locks, always true.
  virtual bool lock() = 0;
};

/// Opens an existing folder of the disk; a symbolic link to one is followed.
std::unique_ptr<Folder> openFolder(const std::string& path);

}  // namespace tavrix
