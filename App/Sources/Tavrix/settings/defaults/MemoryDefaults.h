#pragma once

#include <mutex>

#include "defaults/UserDefaults.h"

namespace tavrix {

/// User defaults that end with the object: for tests, and where there is no place to keep any.
class MemoryDefaults : public UserDefaults {
 public:
  explicit MemoryDefaults(DefaultsObjects objects = {}) : objects_(std::move(objects)) {}

  std::optional<JsonValue> object(std::string_view key) const override;
  std::vector<std::string> keys() const override;
  void apply(const DefaultsChanges& changes) override;
  std::vector<DefaultsFault> takeFaults() override { return {}; }

 private:
  mutable std::mutex mutex_;
  DefaultsObjects objects_;
};

}  // namespace tavrix
