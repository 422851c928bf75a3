#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace tavrix {

/// The only thread that changes state which is shown to the user. Other threads work on values and
/// post their results; code on the loop needs no locks.
class MainLoop {
 public:
  using Moment = std::chrono::steady_clock::time_point;
  using Duration = std::chrono::steady_clock::duration;
  using Task = std::function<void()>;

  virtual ~MainLoop() = default;

  /// Posts a task; may be called from any thread. Tasks run one at a time, in the order of the
  /// moments at which they are due. Tasks of the same moment run in the order of the posts. A task
  /// must not throw.
  void post(Task task) { postAfter(Duration::zero(), std::move(task)); }
  /// As post(), but the task does not run before `delay` has passed.
  virtual void postAfter(Duration delay, Task task) = 0;
  /// Returns the loop's own time, on which `delay` is based. Safe to call from any thread.
  virtual Moment now() const = 0;
};

/// Tasks, ordered by the moment from which they may run. Not thread-safe.
class TaskQueue {
 public:
  void add(MainLoop::Moment due, MainLoop::Task task);
  /// Returns the moment from which the next task may run, or nullopt if there is no task.
  std::optional<MainLoop::Moment> nextDue() const;
  /// Removes the next task and returns it. The queue must not be empty.
  MainLoop::Task take();

 private:
  std::multimap<MainLoop::Moment, MainLoop::Task> tasks_;
};

/// A loop that runs on the calling thread, in real time.
class StandardMainLoop : public MainLoop {
 public:
  void postAfter(Duration delay, Task task) override;
  Moment now() const override { return std::chrono::steady_clock::now(); }

  /// Runs tasks, and waits for further ones, until `isDone()` returns true. Calls `isDone` before
  /// each task.
  void runUntil(const std::function<bool()>& isDone);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  TaskQueue tasks_;
};

}  // namespace tavrix
