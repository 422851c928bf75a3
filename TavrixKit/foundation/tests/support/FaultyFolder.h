#pragma once

#include <algorithm>
#include <cerrno>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "foundation/files/FileError.h"
#include "foundation/files/Folder.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {

/// Thrown by a rule to make one append write its first `bytes` bytes and then fail with `code`.
struct ShortWrite {
  std::size_t bytes;
  int code;
};

/// A rule that is called before every operation of a FaultyFolder and of the files that it creates.
/// It may only observe, wait or change the disk. If it throws, the operation does not take place.
/// Operation and path of each call:
///
///     createFile, createDescriptor            create, the file
///     readFile, openFile, openDescriptor      read, the file
///     renames                rename, the new name
///     removeFile, removeAll  remove, the path
///     makeFolders            makeFolder, the folder
///     status                 status, the file
///     append, overwrite      write, the file
///     setModificationTime    status, the file
///     sync                   sync, the file
///     close                  close, the file
///     syncEntries            sync, the folder ("" for the root)
///     syncVolume             sync, "/"
///     visitAll               list, "" and each folder below; a folder that fails is unreadable
///     names                  list, ""
///
/// It is called on the thread that uses the folder.
using FaultRule = std::function<void(FileOperation operation, const std::string& path)>;

/// Returns a rule that always fails one kind of operation on one path with `code`.
inline FaultRule failing(FileOperation operation, const std::string& path, int code) {
  return [=](FileOperation asked, const std::string& askedPath) {
    if (asked == operation && askedPath == path) throw FileError{operation, path, code};
  };
}
/// As above, for every path.
inline FaultRule failing(FileOperation operation, int code) {
  return [=](FileOperation asked, const std::string& path) {
    if (asked == operation) throw FileError{operation, path, code};
  };
}

/// Returns a rule that refuses names as exFAT, NTFS and shares do, with `code`.
inline FaultRule refusingNames(int code = EINVAL) {
  return [=](FileOperation operation, const std::string& path) {
    for (std::size_t begin = 0; begin <= path.size();) {
      const std::size_t end = std::min(path.find('/', begin), path.size());
      const std::string name = path.substr(begin, end - begin);
      begin = end + 1;
      if (name.find_first_of(":?*<>|\"\\") != std::string::npos || name.ends_with('.') ||
          name.ends_with(' ') || name == "CON" || name.starts_with("CON.")) {
        throw FileError{operation, path, code};
      }
    }
  };
}

/// The differences of a FaultyFolder from the folder behind it. Set them before the folder is used.
struct FolderFaults {
  FaultRule rule;
  std::function<bool()> exists;                         ///< replaces exists()
  std::function<std::uint64_t()> freeBytes;             ///< replaces freeBytes()
  bool skipsSync = false;                               ///< nothing is really synced
  std::optional<bool> lock;                             ///< the result of lock(); nothing is locked
  std::function<void(const std::string& path)> closed;  ///< called after a written file is closed
};

class FaultyFile : public WritableFile {
 public:
  FaultyFile(std::unique_ptr<WritableFile> inner, std::shared_ptr<FolderFaults> faults,
             std::string path)
      : inner_(std::move(inner)), faults_(std::move(faults)), path_(std::move(path)) {}

  void append(std::span<const std::byte> bytes) override {
    try {
      ask(FileOperation::write);
    } catch (const ShortWrite& fault) {
      inner_->append(bytes.first(std::min(fault.bytes, bytes.size())));
      throw FileError{FileOperation::write, path_, fault.code};
    }
    inner_->append(bytes);
  }
  void overwrite(std::uint64_t offset, std::span<const std::byte> bytes) override {
    ask(FileOperation::write);
    inner_->overwrite(offset, bytes);
  }
  void startWriteback() override { inner_->startWriteback(); }
  void sync() override {
    ask(FileOperation::sync);
    if (!faults_->skipsSync) inner_->sync();
  }
  void close() override {
    ask(FileOperation::close);
    inner_->close();
    if (faults_->closed) faults_->closed(path_);
  }

 private:
  void ask(FileOperation operation) const {
    if (faults_->rule) faults_->rule(operation, path_);
  }

  std::unique_ptr<WritableFile> inner_;
  std::shared_ptr<FolderFaults> faults_;
  std::string path_;
};

/// A folder that fails when the test demands it and otherwise forwards to the folder behind it:
///
///     FaultyFolder folder{openFolder(temporary.path())};
///     folder.faults().rule = failing(FileOperation::rename, "index.json", EIO);
class FaultyFolder : public Folder {
 public:
  explicit FaultyFolder(std::unique_ptr<Folder> inner) : inner_(std::move(inner)) {}

  FolderFaults& faults() { return *faults_; }

  const std::string& path() const override { return inner_->path(); }
  std::optional<FileStatus> status(const std::string& path) const override {
    ask(FileOperation::status, path);
    return inner_->status(path);
  }
  std::unique_ptr<WritableFile> createFile(const std::string& path) override {
    ask(FileOperation::create, path);
    return std::make_unique<FaultyFile>(inner_->createFile(path), faults_, path);
  }
  std::string readFile(const std::string& path, std::uint64_t maxBytes) const override {
    ask(FileOperation::read, path);
    return inner_->readFile(path, maxBytes);
  }
  std::unique_ptr<ByteReader> openFile(const std::string& path) const override {
    ask(FileOperation::read, path);
    return inner_->openFile(path);
  }
  FileDescriptor openDescriptor(const std::string& path) const override {
    ask(FileOperation::read, path);
    return inner_->openDescriptor(path);
  }
  FileDescriptor createDescriptor(const std::string& path) override {
    ask(FileOperation::create, path);
    return inner_->createDescriptor(path);
  }
  void setModificationTime(const std::string& path, Instant time) override {
    ask(FileOperation::status, path);
    inner_->setModificationTime(path, time);
  }
  void makeFolders(const std::string& path) override {
    ask(FileOperation::makeFolder, path);
    inner_->makeFolders(path);
  }
  bool renameWithoutReplacing(const std::string& from, const std::string& to) override {
    ask(FileOperation::rename, to);
    return inner_->renameWithoutReplacing(from, to);
  }
  void renameReplacing(const std::string& from, const std::string& to) override {
    ask(FileOperation::rename, to);
    inner_->renameReplacing(from, to);
  }
  void removeFile(const std::string& path) override {
    ask(FileOperation::remove, path);
    inner_->removeFile(path);
  }
  void removeAll(const std::string& path) override {
    ask(FileOperation::remove, path);
    inner_->removeAll(path);
  }
  void syncEntries(const std::string& folder) override {
    ask(FileOperation::sync, folder);
    if (!faults_->skipsSync) inner_->syncEntries(folder);
  }
  void syncVolume() override {
    ask(FileOperation::sync, "/");
    if (!faults_->skipsSync) inner_->syncVolume();
  }
  std::vector<UnreadableFolder> visitAll(const Visitor& visitor) const override {
    ask(FileOperation::list, "");
    std::vector<UnreadableFolder> closed;
    auto unreadable = inner_->visitAll([&](const std::string& path, const FileStatus& status) {
      if (liesInside(path, closed)) return;
      visitor(path, status);
      if (status.type != FileStatus::Type::folder) return;
      try {
        ask(FileOperation::list, path);
      } catch (const FileError& error) {
        const auto isBefore = [](const auto& a, const auto& b) { return a.path < b.path; };
        const UnreadableFolder folder{path, error.code()};
        closed.insert(std::upper_bound(closed.begin(), closed.end(), folder, isBefore), folder);
      }
    });
    std::erase_if(unreadable, [&](const auto& folder) { return liesInside(folder.path, closed); });
    unreadable.insert(unreadable.end(), closed.begin(), closed.end());
    std::sort(unreadable.begin(), unreadable.end(),
              [](const auto& a, const auto& b) { return a.path < b.path; });
    return unreadable;
  }
  std::vector<std::string> names() const override {
    ask(FileOperation::list, "");
    return inner_->names();
  }
  void checkWritable() const override { inner_->checkWritable(); }
  bool exists() const override { return faults_->exists ? faults_->exists() : inner_->exists(); }
  std::uint64_t freeBytes() const override {
    return faults_->freeBytes ? faults_->freeBytes() : inner_->freeBytes();
  }
  bool lock() override { return faults_->lock ? *faults_->lock : inner_->lock(); }
  bool isLocked() const override { return faults_->lock ? *faults_->lock : inner_->isLocked(); }

 private:
  void ask(FileOperation operation, const std::string& path) const {
    if (faults_->rule) faults_->rule(operation, path);
  }

  std::unique_ptr<Folder> inner_;
  std::shared_ptr<FolderFaults> faults_ = std::make_shared<FolderFaults>();
};

}  // namespace tavrix
