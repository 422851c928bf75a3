#pragma once

#include <mutex>

#include "settings/defaults/UserDefaults.h"

namespace tavrix {

/// User defaults that live as long as the object: for tests, and where no storage is available.
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
