#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/StringMap.h"
#include "foundation/Time.h"

namespace tavrix {

struct FileOnDisk {
  std::uint64_t size = 0;  ///< bytes
  Instant modified;

  friend bool operator==(const FileOnDisk&, const FileOnDisk&) = default;
};

/// The regular files of a destination by relative path. There may be a million of them, so the
/// paths are stored in a few large blocks. Cannot be copied; use Shared to share it.
class FilesOnDisk {
 public:
  using Entry = std::pair<std::string_view, FileOnDisk>;

  FilesOnDisk() = default;
  FilesOnDisk(std::initializer_list<Entry> entries) {
    for (const auto& [path, file] : entries) add(path, file);
  }

  /// Adds a file whose path is not in the map yet.
  void add(std::string_view path, const FileOnDisk& file) { files_.emplace(stored(path), file); }

  /// Returns nullptr if no file has this path.
  const FileOnDisk* find(std::string_view path) const {
    const auto found = files_.find(path);
    return found == files_.end() ? nullptr : &found->second;
  }
  bool contains(std::string_view path) const { return files_.contains(path); }
  bool empty() const { return files_.empty(); }
  /// Iterates over the files in no particular order, as pairs of path and FileOnDisk.
  auto begin() const { return files_.begin(); }
  auto end() const { return files_.end(); }

  friend bool operator==(const FilesOnDisk& a, const FilesOnDisk& b) {
    return a.files_ == b.files_;
  }

 private:
  static constexpr std::size_t blockBytes = 65536;

  std::string_view stored(std::string_view path) {
    if (path.size() > free_) {
      free_ = std::max(blockBytes, path.size());
      blocks_.push_back(std::make_unique_for_overwrite<char[]>(free_));
      next_ = blocks_.back().get();
    }
    if (!path.empty()) std::memcpy(next_, path.data(), path.size());
    const std::string_view text{next_, path.size()};
    next_ += path.size();
    free_ -= path.size();
    return text;
  }

  std::vector<std::unique_ptr<char[]>> blocks_;
  char* next_ = nullptr;
  std::size_t free_ = 0;
  StringViewMap<FileOnDisk> files_;
};

}  // namespace tavrix
