#include "foundation/tasks/SerialQueue.h"

namespace tavrix {

SerialQueue::~SerialQueue() {
  {
    const std::lock_guard lock{mutex_};
    isClosed_ = true;
    changed_.notify_all();
  }
  if (thread_.joinable()) thread_.join();
}

void SerialQueue::post(std::function<void()> work) {
  const std::lock_guard lock{mutex_};
  waiting_.push_back(std::move(work));
  if (!thread_.joinable()) thread_ = std::thread{[this] { run(); }};
  changed_.notify_all();
}

void SerialQueue::wait() {
  std::unique_lock lock{mutex_};
  changed_.wait(lock, [this] { return waiting_.empty() && !isBusy_; });
}

void SerialQueue::run() {
  std::unique_lock lock{mutex_};
  for (;;) {
    changed_.wait(lock, [this] { return isClosed_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    {
      const auto work = std::move(waiting_.front());
      waiting_.pop_front();
      isBusy_ = true;
      lock.unlock();
      work();
      // The work is destroyed before wait() learns that it is done.
    }
    lock.lock();
    isBusy_ = false;
    changed_.notify_all();
  }
}

}  // namespace tavrix
