#pragma once

#include <algorithm>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Log.h"

namespace tavrix {

/// A log that keeps its lines.
class RecordingLog : public Log {
 public:
  explicit RecordingLog(bool showsPrivateFields = false)
      : showsPrivateFields_(showsPrivateFields) {}

  bool showsPrivateFields() const override { return showsPrivateFields_; }
  void write(std::string_view line) override {
    const std::lock_guard lock{mutex_};
    lines_.emplace_back(line);
  }

  std::vector<std::string> lines() const {
    const std::lock_guard lock{mutex_};
    return lines_;
  }
  bool has(std::string_view line) const {
    const std::lock_guard lock{mutex_};
    return std::find(lines_.begin(), lines_.end(), line) != lines_.end();
  }
  void clear() {
    const std::lock_guard lock{mutex_};
    lines_.clear();
  }

 private:
  bool showsPrivateFields_;
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

}  // namespace tavrix
