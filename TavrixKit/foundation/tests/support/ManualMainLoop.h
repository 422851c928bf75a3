#pragma once

#include <condition_variable>
#include <mutex>

#include "foundation/tasks/MainLoop.h"

namespace tavrix {

/// A loop whose time and progress the test controls. Other threads may post.
class ManualMainLoop : public MainLoop {
 public:
  void postAfter(Duration delay, Task task) override {
    const std::lock_guard lock{mutex_};
    tasks_.add(now_ + delay, std::move(task));
    posted_.notify_all();
  }
  Moment now() const override {
    const std::lock_guard lock{mutex_};
    return now_;
  }

  /// Runs one task that is due. Returns false if there was none.
  bool runOne() {
    Task task;
    {
      const std::lock_guard lock{mutex_};
      const auto due = tasks_.nextDue();
      if (!due || *due > now_) return false;
      task = tasks_.take();
    }
    task();
    return true;
  }
  /// Runs all tasks that are due, and tasks without a delay that they post.
  void runDue() {
    while (runOne()) {
    }
  }
  /// Advances the time; every task runs at its moment.
  void advance(Duration duration) {
    const Moment end = now() + duration;
    while (true) {
      runDue();
      const std::lock_guard lock{mutex_};
      const auto due = tasks_.nextDue();
      now_ = due && *due < end ? *due : end;
      if (now_ == end && (!due || *due > end)) return;
    }
  }
  /// Runs tasks that are due, also those that other threads post, until `isDone()` returns true.
  /// The loop's time does not advance. Returns false if that takes longer than `patience`.
  template <typename Condition>
  [[nodiscard]] bool runUntil(Condition isDone,
                              std::chrono::seconds patience = std::chrono::seconds{60}) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!isDone()) {
      if (runOne()) continue;
      std::unique_lock lock{mutex_};
      const auto hasDue = [&] { return tasks_.nextDue() && *tasks_.nextDue() <= now_; };
      if (!posted_.wait_until(lock, end, hasDue)) return false;
    }
    return true;
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable posted_;
  TaskQueue tasks_;
  Moment now_{};
};

}  // namespace tavrix
