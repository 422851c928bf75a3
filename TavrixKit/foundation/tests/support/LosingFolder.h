#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

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
    /// If not 0, only a part goes, another one for each number: some of the names, and of some
    /// files the end, which may have become zeros.
    std::uint64_t part = 0;
  };
  static std::vector<Loss> losses() {
    return {{}, {.names = false}, {.data = false}, {.part = 1}, {.part = 2}, {.part = 3}};
  }
  /// Puts the folder into the state that it has after the failure.
  void lose(const Loss& loss) {
    const std::lock_guard lock{*mutex_};
    readOutside();
    Names left = loss.names ? syncedNames_ : names_;
    if (loss.part != 0) left = partOfNames(loss.part);
    if (loss.data) loseData(left, loss.part);
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

  /// Takes each name from what was synced or from what was not.
  Names partOfNames(std::uint64_t part) const {
    Names left;
    for (const Names* const all : {&names_, &syncedNames_}) {
      for (const auto& [path, entry] : *all) {
        const Names& from = chosen(path, part) % 2 == 0 ? names_ : syncedNames_;
        const auto found = from.find(path);
        if (found != from.end()) left.insert(*found);
      }
    }
    return left;
  }
  static void loseData(const Names& names, std::uint64_t part) {
    std::set<Content*> done;  // a file may have its earlier name, too
    for (const auto& [path, entry] : names) {
      if (entry == nullptr || !done.insert(entry.get()).second) continue;
      entry->content = part == 0 ? entry->synced : partOfContent(*entry, chosen(path + ".", part));
    }
  }
  static std::string partOfContent(const Content& file, std::uint64_t choice) {
    constexpr std::uint64_t outcomes = 3;
    const std::uint64_t outcome = choice % outcomes;
    const bool isLonger = file.content.starts_with(file.synced);
    if (outcome == 0 || !isLonger) return choice % 2 == 0 ? file.synced : file.content;
    const std::size_t added = file.content.size() - file.synced.size();
    std::string left = file.content.substr(0, file.synced.size() + choice / outcomes % (added + 1));
    if (outcome == 2) left.resize(file.content.size(), '\0');
    return left;
  }
  static std::uint64_t chosen(const std::string& path, std::uint64_t part) {
    return std::hash<std::string>{}(path + "#" + std::to_string(part));
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
  for (const LosingFolder::Loss& loss : LosingFolder::losses()) {
    bool isDone = false;
    for (int failAt = 1; !isDone; ++failAt) {
      SCOPED_TRACE(testing::Message() << "step " << failAt << ", loss of data " << loss.data
                                      << ", names " << loss.names << ", part " << loss.part);
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
