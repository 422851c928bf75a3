#include "settings/defaults/MemoryDefaults.h"

#include <algorithm>
#include <iterator>

namespace tavrix {

std::optional<JsonValue> MemoryDefaults::object(std::string_view key) const {
  const std::lock_guard lock{mutex_};
  const auto found = objects_.find(key);
  if (found == objects_.end()) return std::nullopt;
  return found->second;
}

std::vector<std::string> MemoryDefaults::keys() const {
  const std::lock_guard lock{mutex_};
  std::vector<std::string> keys;
  std::transform(objects_.begin(), objects_.end(), std::back_inserter(keys),
                 [](const auto& entry) { return entry.first; });
  return keys;
}

void MemoryDefaults::apply(const DefaultsChanges& changes) {
  const std::lock_guard lock{mutex_};
  objects_ = withChanges(std::move(objects_), changes);
}

}  // namespace tavrix
