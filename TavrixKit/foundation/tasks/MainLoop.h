#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace tavrix {

/// The one thread on which state that is shown to people changes. Other threads work on values and
/// post what they found; nothing that runs on the loop needs a lock.
class MainLoop {
 public:
  using Moment = std::chrono::steady_clock::time_point;
  using Duration = std::chrono::steady_clock::duration;
  using Task = std::function<void()>;

  virtual ~MainLoop() = default;

  /// Hands over a task from any thread. Tasks run one at a time, earlier moments first, and in the
  /// order in which they were posted where moments are equal. A task must not throw.
  void post(Task task) { postAfter(Duration::zero(), std::move(task)); }
  /// The same, to run not before `delay` has passed.
  virtual void postAfter(Duration delay, Task task) = 0;
  /// The loop's own time: what `delay` is counted in. Safe to call from any thread.
  virtual Moment now() const = 0;
};

/// Tasks by the moment from which they may run. Not safe to share by itself.
class TaskQueue {
 public:
  void add(MainLoop::Moment due, MainLoop::Task task);
  /// When the next task may run; nothing when there is none.
  std::optional<MainLoop::Moment> nextDue() const;
  /// Takes the next task out. The queue must not be empty.
  MainLoop::Task take();

 private:
  std::multimap<MainLoop::Moment, MainLoop::Task> tasks_;
};

/// A loop that runs on the thread that calls it, in real time.
class StandardMainLoop : public MainLoop {
 public:
  void postAfter(Duration delay, Task task) override;
  Moment now() const override { return std::chrono::steady_clock::now(); }

  /// Runs tasks, and waits for further ones, until `isDone`, which is asked before each, says so.
  void runUntil(const std::function<bool()>& isDone);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  TaskQueue tasks_;
};

}  // namespace tavrix
