#pragma once

#include <absl/container/flat_hash_set.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/Text.h"

namespace tavrix {

/// The paths that a plan gives away, compared without regard to letter case. It keeps 64 bits of each
/// (FNV-1a, the same on every machine): should two paths ever share them, the later one is taken for
/// given away and gets a number more than it needs, in every run alike.
class PathRegister {
 public:
  void add(std::string_view path) { given_.insert(key(path)); }
  bool contains(std::string_view path) const { return given_.contains(key(path)); }
  void remove(std::string_view path) { given_.erase(key(path)); }
  void reserve(std::size_t count) { given_.reserve(count); }

 private:
  static std::uint64_t hashed(std::uint64_t hash, std::string_view text) {
    for (const char c : text) {
      hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
    return hash;
  }

  std::uint64_t key(std::string_view path) const {
    const auto slash = path.rfind('/');
    const std::size_t folderBytes = slash == std::string_view::npos ? 0 : slash + 1;
    // Files come folder by folder, and folding a folder's name anew for each costs most of the time.
    if (path.substr(0, folderBytes) != folder_) {
      folder_ = path.substr(0, folderBytes);
      folderHash_ = hashed(14695981039346656037U, caseFolded(folder_));
    }
    return hashed(folderHash_, caseFolded(path.substr(folderBytes)));
  }

  absl::flat_hash_set<std::uint64_t> given_;
  mutable std::string folder_;
  mutable std::uint64_t folderHash_ = 14695981039346656037U;
};

}  // namespace tavrix
