#pragma once

#include <memory>
#include <string>

namespace tavrix {

/// A file that this process keeps locked. The lock ends with the object, and with the process
/// however it ends. The file is left behind unless remove() is called.
class LockFile {
 public:
  /// Creates the file if it does not exist, and locks it. Returns nullptr if it is locked already,
  /// by another process or by another object of this one. Throws FileError if the file cannot be
  /// created or its volume has no locks.
  static std::unique_ptr<LockFile> tryLock(const std::string& path);
  ~LockFile();
  LockFile(const LockFile&) = delete;
  LockFile& operator=(const LockFile&) = delete;

  /// Removes the file. Call it last: afterwards another process can lock a new file of this name.
  void remove() noexcept;

 private:
  LockFile(std::string path, int descriptor);

  std::string path_;
  int descriptor_;
};

}  // namespace tavrix
