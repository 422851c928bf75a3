#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

namespace tavrix {

/// Makes the ids of one result unique: "-2" is appended for the second group with an id, "-3" for
/// the third.
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
  std::unordered_map<std::string, std::size_t> counts_;  ///< taken ids and the last number of each
};

}  // namespace tavrix
