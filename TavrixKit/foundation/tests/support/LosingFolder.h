#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "foundation/files/AtomicFile.h"
#include "foundation/tests/support/FaultyFolder.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {

/// A folder of a machine whose power can fail: it knows which bytes of its files and which names
/// were synced, and can lose the rest. Starts empty, and its content is kept in memory besides. A
/// file that was made by its descriptor is synced with the volume alone.
class LosingFolder : public FaultyFolder {
 public:
  explicit LosingFolder(std::unique_ptr<Folder> inner) : FaultyFolder(std::move(inner)) {
    // It knows what a sync keeps, and the disk need not take part.
    faults().skipsSync = true;
  }

  /// The parts that a power failure takes unless they were synced: bytes, names and folders, or
  /// both. A disk may have written either of them.
  struct Loss {
    bool data = true;
    bool names = true;
  };
  /// Puts the folder into the state that it has after the failure.
  void lose(const Loss& loss) {
    const std::lock_guard lock{*mutex_};
    readOutside();
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
    const std::lock_guard lock{*mutex_};
    auto file = FaultyFolder::createFile(path);
    names_[path] = std::make_shared<Content>();
    return std::make_unique<File>(std::move(file), names_[path], mutex_);
  }
  FileDescriptor createDescriptor(const std::string& path) override {
    const std::lock_guard lock{*mutex_};
    FileDescriptor descriptor = FaultyFolder::createDescriptor(path);
    names_[path] = std::make_shared<Content>();
    names_[path]->isOutside = true;
    return descriptor;
  }
  void makeFolders(const std::string& path) override {
    const std::lock_guard lock{*mutex_};
    FaultyFolder::makeFolders(path);
    for (std::string each = path; !each.empty(); each = parentPath(each)) names_[each] = nullptr;
  }
  bool renameWithoutReplacing(const std::string& from, const std::string& to) override {
    const std::lock_guard lock{*mutex_};
    const bool isDone = FaultyFolder::renameWithoutReplacing(from, to);
    if (isDone) rename(from, to);
    return isDone;
  }
  void renameReplacing(const std::string& from, const std::string& to) override {
    const std::lock_guard lock{*mutex_};
    FaultyFolder::renameReplacing(from, to);
    rename(from, to);
  }
  void removeFile(const std::string& path) override {
    const std::lock_guard lock{*mutex_};
    FaultyFolder::removeFile(path);
    names_.erase(path);
  }
  void removeAll(const std::string& path) override {
    const std::lock_guard lock{*mutex_};
    FaultyFolder::removeAll(path);
    std::erase_if(names_, [&](const auto& entry) {
      return entry.first == path || entry.first.starts_with(path + "/");
    });
  }
  void syncEntries(const std::string& folder) override {
    const std::lock_guard lock{*mutex_};
    FaultyFolder::syncEntries(folder);
    const auto isInside = [&](const auto& entry) { return parentPath(entry.first) == folder; };
    std::erase_if(syncedNames_, isInside);
    std::copy_if(names_.begin(), names_.end(), std::inserter(syncedNames_, syncedNames_.end()),
                 isInside);
  }
  void syncVolume() override {
    const std::lock_guard lock{*mutex_};
    FaultyFolder::syncVolume();
    readOutside();
    for (const auto& [path, entry] : names_) {
      if (entry != nullptr) entry->synced = entry->content;
    }
    syncedNames_ = names_;
  }

 private:
  struct Content {
    std::string content;
    std::string synced;
    bool isOutside = false;  ///< written by its descriptor, so only the disk knows its bytes
  };
  /// By path, in which a folder comes before what is in it; nullptr for a folder.
  using Names = std::map<std::string, std::shared_ptr<Content>>;

  class File : public WritableFile {
   public:
    File(std::unique_ptr<WritableFile> inner, std::shared_ptr<Content> entry,
         std::shared_ptr<std::recursive_mutex> mutex)
        : inner_(std::move(inner)), entry_(std::move(entry)), mutex_(std::move(mutex)) {}

    void append(std::span<const std::byte> bytes) override {
      inner_->append(bytes);
      const std::lock_guard lock{*mutex_};
      entry_->content.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    void overwrite(std::uint64_t offset, std::span<const std::byte> bytes) override {
      inner_->overwrite(offset, bytes);
      const std::lock_guard lock{*mutex_};
      entry_->content.replace(offset, bytes.size(), reinterpret_cast<const char*>(bytes.data()),
                              bytes.size());
    }
    void startWriteback() override { inner_->startWriteback(); }
    void sync() override {
      inner_->sync();
      const std::lock_guard lock{*mutex_};
      entry_->synced = entry_->content;
    }
    void close() override { inner_->close(); }

   private:
    std::unique_ptr<WritableFile> inner_;
    std::shared_ptr<Content> entry_;
    std::shared_ptr<std::recursive_mutex> mutex_;
  };

  void readOutside() {
    for (const auto& [path, entry] : names_) {
      if (entry == nullptr || !entry->isOutside) continue;
      entry->content = FaultyFolder::readFile(path, std::numeric_limits<std::uint64_t>::max());
    }
  }

  void rename(const std::string& from, const std::string& to) {
    auto& entry = names_[from];
    // One that was there before.
    if (entry == nullptr) entry = std::make_shared<Content>(Content{"", "", true});
    names_[to] = entry;
    names_.erase(from);
  }

  std::shared_ptr<std::recursive_mutex> mutex_ = std::make_shared<std::recursive_mutex>();
  Names names_;
  Names syncedNames_;
};

/// Calls `work` with new folders again and again, each time after `prepare`, and lets the power
/// fail at each of its steps and after the last one, with each kind of loss. Then calls `check`
/// with what is left, and with true if the work was done before the failure. After a failure
/// nothing happens to the folder any more, no clearing up either; what `work` throws is ignored.
inline void forEachPowerFailure(const std::function<void(Folder&)>& prepare,
                                const std::function<void(Folder&)>& work,
                                const std::function<void(Folder&, bool isDone)>& check) {
  for (const LosingFolder::Loss loss :
       {LosingFolder::Loss{true, true}, {true, false}, {false, true}}) {
    bool isDone = false;
    for (int failAt = 1; !isDone; ++failAt) {
      SCOPED_TRACE(failAt);
      const TemporaryFolder temporary;
      LosingFolder folder{openFolder(temporary.path())};
      prepare(folder);
      std::atomic<int> count = 0;  // folders are used on several threads
      folder.faults().rule = [&](FileOperation operation, const std::string& path) {
        if (++count >= failAt) throw FileError{operation, path, EIO};
      };
      try {
        work(folder);
      } catch (const std::exception&) {
      }
      isDone = count < failAt;
      folder.faults().rule = {};
      folder.lose(loss);
      check(folder, isDone);
    }
  }
}

}  // namespace tavrix
