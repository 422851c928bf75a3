#pragma once

#include <memory>
#include <string>

namespace tavrix {

/// Keeps the computer awake during long work. Used by one thread.
class SleepInhibitor {
 public:
  virtual ~SleepInhibitor() = default;

  /// Keeps the computer from falling asleep until release(). `reason` is shown by the system to
  /// users who ask why. Has no effect if it is held already.
  virtual void hold(const std::string& reason) = 0;
  /// Has no effect if it is not held.
  virtual void release() = 0;
};

/// Returns the inhibitor of this system. Where the system offers none, it has no effect.
std::unique_ptr<SleepInhibitor> openSleepInhibitor();

/// Holds an inhibitor during its life; `inhibitor` may be null.
class SleepHold {
 public:
  SleepHold(SleepInhibitor* inhibitor, const std::string& reason) : inhibitor_(inhibitor) {
    if (inhibitor_ != nullptr) inhibitor_->hold(reason);
  }
  ~SleepHold() {
    if (inhibitor_ != nullptr) inhibitor_->release();
  }
  SleepHold(const SleepHold&) = delete;
  SleepHold& operator=(const SleepHold&) = delete;

 private:
  SleepInhibitor* inhibitor_;
};

}  // namespace tavrix
