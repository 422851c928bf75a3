#include "model/FolderKeys.h"

namespace tavrix {

std::uint32_t FolderKeys::numberOf(std::string_view key) {
  const std::lock_guard lock{mutex_};
  const auto found = numbers_.find(key);
  if (found != numbers_.end()) return found->second;
  const auto number = static_cast<std::uint32_t>(keys_.size());
  keys_.push_back(std::make_unique<const std::string>(key));
  numbers_.emplace(*keys_.back(), number);
  return number;
}

std::string FolderKeys::keyOf(std::uint32_t number) const {
  const std::lock_guard lock{mutex_};
  return *keys_.at(number);
}

}  // namespace tavrix
