#pragma once

#include <absl/container/flat_hash_map.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// Numbers the keys of folders: 0, 1, 2, … in the order in which they are first seen. A key keeps
/// its number as long as the object lives, so that sets of keys can be sets of small numbers.
/// Thread-safe.
class FolderKeys {
 public:
  /// Returns the number of the key. A new key gets the next number.
  std::uint32_t numberOf(std::string_view key);
  /// Returns the key with the number, which must have been given.
  std::string keyOf(std::uint32_t number) const;

 private:
  mutable std::mutex mutex_;
  std::vector<std::unique_ptr<const std::string>> keys_;  ///< by number
  absl::flat_hash_map<std::string_view, std::uint32_t> numbers_;
};

}  // namespace tavrix
