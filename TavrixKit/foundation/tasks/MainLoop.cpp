#include "foundation/tasks/MainLoop.h"

namespace tavrix {

void TaskQueue::add(MainLoop::Moment due, MainLoop::Task task) {
  tasks_.emplace(due, std::move(task));  // after all tasks that are due at the same moment
}

std::optional<MainLoop::Moment> TaskQueue::nextDue() const {
  if (tasks_.empty()) return std::nullopt;
  return tasks_.begin()->first;
}

MainLoop::Task TaskQueue::take() { return std::move(tasks_.extract(tasks_.begin()).mapped()); }

void StandardMainLoop::postAfter(Duration delay, Task task) {
  const std::lock_guard lock{mutex_};
  tasks_.add(now() + delay, std::move(task));
  changed_.notify_one();
}

void StandardMainLoop::runUntil(const std::function<bool()>& isDone) {
  std::unique_lock lock{mutex_};
  const auto isDoneNow = [&] {
    lock.unlock();
    const bool done = isDone();
    lock.lock();
    return done;
  };
  while (!isDoneNow()) {
    while (true) {
      const std::optional<Moment> due = tasks_.nextDue();
      if (due && *due <= now()) break;
      due ? void(changed_.wait_until(lock, *due)) : changed_.wait(lock);
    }
    Task task = tasks_.take();
    lock.unlock();
    task();
    task = nullptr;  // also destroys the values that it holds without the lock
    lock.lock();
  }
}

}  // namespace tavrix
