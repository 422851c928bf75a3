#pragma once

#include <absl/container/flat_hash_set.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/Text.h"

namespace tavrix {

/// The paths that a plan has assigned, compared without regard to letter case. Keeps a 64-bit hash
/// of each path (FNV-1a, the same on every machine). If two paths ever have the same hash, the
/// later one is treated as assigned and gets a needless number, in every run alike.
class PathRegister {
 public:
  /// Returns false if the path is already assigned.
  bool add(std::string_view path) { return given_.insert(key(path)).second; }
  bool contains(std::string_view path) const { return given_.contains(key(path)); }
  void remove(std::string_view path) { given_.erase(key(path)); }
  void reserve(std::size_t count) { given_.reserve(count); }

 private:
  static std::uint64_t hashed(std::uint64_t hash, std::string_view text) {
    if (!isAscii(text)) return hashedBytes(hash, caseFolded(text));
    for (const char c : text)
      hash = mixed(hash, c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c);
    return hash;
  }
  static std::uint64_t hashedBytes(std::uint64_t hash, std::string_view text) {
    for (const char c : text) hash = mixed(hash, c);
    return hash;
  }
  static std::uint64_t mixed(std::uint64_t hash, char c) {
    return (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  }

  std::uint64_t key(std::string_view path) const {
    const auto slash = path.rfind('/');
    const std::size_t folderBytes = slash == std::string_view::npos ? 0 : slash + 1;
    // Files come folder by folder; case-folding the folder's name for each of them would take most
    // of the time.
    if (path.substr(0, folderBytes) != folder_) {
      folder_ = path.substr(0, folderBytes);
      folderHash_ = hashed(offsetBasis, folder_);
    }
    return hashed(folderHash_, path.substr(folderBytes));
  }

  static constexpr std::uint64_t offsetBasis = 14695981039346656037U;

  absl::flat_hash_set<std::uint64_t> given_;
  mutable std::string folder_;
  mutable std::uint64_t folderHash_ = offsetBasis;
};

}  // namespace tavrix
