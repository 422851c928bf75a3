#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "foundation/files/Folder.h"
#include "foundation/files/LockFile.h"

namespace tavrix {

/// The files that this process has fetched for viewing, in a folder of its own, which only the user
/// can open. The folder is created with the first file and removed by the destructor. A locked file
/// beside it shows other processes that it is in use. Used by one thread at a time.
class PreviewFolder {
 public:
  struct Setup {
    std::string thumbnailFolder;
    /// If the files together have more bytes, those whose last use is oldest are removed. A single
    /// file may be larger.
    std::uint64_t maxBytes = 1'000'000'000;
    std::function<std::unique_ptr<Folder>(const std::string& path)> open = openFolder;
  };
  explicit PreviewFolder(Setup setup) : setup_(std::move(setup)) {}
  ~PreviewFolder();
  PreviewFolder(const PreviewFolder&) = delete;
  PreviewFolder& operator=(const PreviewFolder&) = delete;

  /// Removes the folders of processes that have ended without removing them.
  void removeLeftOvers() noexcept;

  /// Returns the absolute path of a kept file, which is now the one used last, or nullopt if there
  /// is none.
  std::optional<std::string> find(const std::string& key);

  using Write = std::function<void(WritableFile&)>;
  /// Keeps a file of `bytes` bytes, which `write` writes, and returns its absolute path. The file
  /// is called `name`, which must be a safe path component, and has a folder to itself. Throws
  /// FileError, and what `write` throws; then nothing is kept.
  std::string add(const std::string& key, const std::string& name, std::uint64_t bytes,
                  const Write& write);

 private:
  struct Entry {
    std::string folder;
    std::string path;  ///< in the folder of the process
    std::uint64_t bytes = 0;
    std::uint64_t lastUse = 0;  ///< the later, the greater
  };
  using Entries = std::map<std::string, Entry>;

  std::string base() const { return setup_.thumbnailFolder + "/previews"; }
  void openOrMakeFolder();
  /// Removes files until one of `bytes` bytes fits. Throws FileError if it cannot fit on the disk.
  void makeRoom(std::uint64_t bytes);
  Entries::iterator remove(Entries::iterator entry);
  void removeIfPossible(const std::string& path) noexcept;

  Setup setup_;
  std::string name_;  ///< of the folder of this process
  std::unique_ptr<LockFile> lock_;
  std::unique_ptr<Folder> folder_;  ///< nullptr until it is needed
  Entries entries_;
  std::uint64_t totalBytes_ = 0;
  std::uint64_t lastUse_ = 0;
  std::uint64_t lastFolder_ = 0;
};

}  // namespace tavrix
