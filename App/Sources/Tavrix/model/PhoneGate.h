#pragma once

#include <condition_variable>
#include <mutex>
#include <stop_token>

namespace tavrix {

/// Blocks the thread of a run until its phone is back.
class PhoneGate {
 public:
  /// Waits until open() is called from any thread. Returns false if a stop is requested first.
  bool wait(const std::stop_token& stop) {
    std::unique_lock lock{mutex_};
    const bool isOpen = changed_.wait(lock, stop, [this] { return isOpen_; });
    isOpen_ = false;
    return isOpen;
  }
  void open() {
    {
      const std::lock_guard lock{mutex_};
      isOpen_ = true;
    }
    changed_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable_any changed_;
  bool isOpen_ = false;
};

}  // namespace tavrix
