#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "foundation/files/AtomicFile.h"
#include "foundation/tests/support/FaultyFolder.h"

namespace tavrix {

/// A folder of a machine whose power can fail: it knows which bytes of its files and which names
/// were synced, and can lose the rest. Starts empty, and its content is kept in memory besides. For
/// one thread.
class LosingFolder : public FaultyFolder {
 public:
  explicit LosingFolder(std::unique_ptr<Folder> inner) : FaultyFolder(std::move(inner)) {}

  /// The parts that a power failure takes unless they were synced: bytes, names and folders, or
  /// both. A disk may have written either of them.
  struct Loss {
    bool data = true;
    bool names = true;
  };
  /// Puts the folder into the state that it has after the failure.
  void lose(const Loss& loss) {
    const Names left = loss.names ? syncedNames_ : names_;
    for (const auto& [path, entry] : names_) {
      if (parentPath(path).empty()) FaultyFolder::removeAll(path);
    }
    names_.clear();
    for (const auto& [path, entry] : left) {
      const std::string parent = parentPath(path);
      const bool isReachable = parent.empty() || names_.contains(parent);
      if (!isReachable) continue;
      names_[path] = entry;
      if (entry == nullptr) {
        FaultyFolder::makeFolders(path);
        continue;
      }
      if (loss.data) entry->content = entry->synced;
      FaultyFolder::createFile(path)->append(std::as_bytes(std::span{entry->content}));
    }
    syncVolume();
  }

  std::unique_ptr<WritableFile> createFile(const std::string& path) override {
    auto file = FaultyFolder::createFile(path);
    names_[path] = std::make_shared<Content>();
    return std::make_unique<File>(std::move(file), names_[path]);
  }
  void makeFolders(const std::string& path) override {
    FaultyFolder::makeFolders(path);
    for (std::string each = path; !each.empty(); each = parentPath(each)) names_[each] = nullptr;
  }
  bool renameWithoutReplacing(const std::string& from, const std::string& to) override {
    const bool isDone = FaultyFolder::renameWithoutReplacing(from, to);
    if (isDone) rename(from, to);
    return isDone;
  }
  void renameReplacing(const std::string& from, const std::string& to) override {
    FaultyFolder::renameReplacing(from, to);
    rename(from, to);
  }
  void removeFile(const std::string& path) override {
    FaultyFolder::removeFile(path);
    names_.erase(path);
  }
  void removeAll(const std::string& path) override {
    FaultyFolder::removeAll(path);
    std::erase_if(names_, [&](const auto& entry) {
      return entry.first == path || entry.first.starts_with(path + "/");
    });
  }
  void syncEntries(const std::string& folder) override {
    FaultyFolder::syncEntries(folder);
    const auto isInside = [&](const auto& entry) { return parentPath(entry.first) == folder; };
    std::erase_if(syncedNames_, isInside);
    std::copy_if(names_.begin(), names_.end(), std::inserter(syncedNames_, syncedNames_.end()),
                 isInside);
  }
  void syncVolume() override {
    FaultyFolder::syncVolume();
    for (const auto& [path, entry] : names_) {
      if (entry != nullptr) entry->synced = entry->content;
    }
    syncedNames_ = names_;
  }

 private:
  struct Content {
    std::string content;
    std::string synced;
  };
  /// By path, in which a folder comes before what is in it; nullptr for a folder.
  using Names = std::map<std::string, std::shared_ptr<Content>>;

  class File : public WritableFile {
   public:
    File(std::unique_ptr<WritableFile> inner, std::shared_ptr<Content> entry)
        : inner_(std::move(inner)), entry_(std::move(entry)) {}

    void append(std::span<const std::byte> bytes) override {
      inner_->append(bytes);
      entry_->content.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    void overwrite(std::uint64_t offset, std::span<const std::byte> bytes) override {
      inner_->overwrite(offset, bytes);
      entry_->content.replace(offset, bytes.size(), reinterpret_cast<const char*>(bytes.data()),
                              bytes.size());
    }
    void startWriteback() override { inner_->startWriteback(); }
    void sync() override {
      inner_->sync();
      entry_->synced = entry_->content;
    }
    void close() override { inner_->close(); }

   private:
    std::unique_ptr<WritableFile> inner_;
    std::shared_ptr<Content> entry_;
  };

  void rename(const std::string& from, const std::string& to) {
    names_[to] = names_.at(from);
    names_.erase(from);
  }

  Names names_;
  Names syncedNames_;
};

}  // namespace tavrix
