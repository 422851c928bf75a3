#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

namespace tavrix {

/// Keeps the ids of one result apart: the second group of an id gets "-2" after it, the third "-3".
class GroupIDs {
 public:
  std::string take(const std::string& id) {
    std::string unique = id;
    while (!counts_.try_emplace(unique, 1).second) {
      unique = id + "-" + std::to_string(++counts_[id]);
    }
    return unique;
  }

 private:
  std::unordered_map<std::string, std::size_t> counts_;  ///< every id taken, with its groups
};

}  // namespace tavrix
