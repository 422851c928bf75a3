#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace tavrix {

/// Runs pieces of work one after another, in the order of the posts, on a thread of its own. The
/// thread starts with the first piece. The destructor waits until all pieces are done.
class SerialQueue {
 public:
  SerialQueue() = default;
  ~SerialQueue();
  SerialQueue(const SerialQueue&) = delete;
  SerialQueue& operator=(const SerialQueue&) = delete;

  /// `work` must not throw.
  void post(std::function<void()> work);
  /// Waits until all work posted so far is done.
  void wait();

 private:
  void run();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> waiting_;
  bool isBusy_ = false;
  bool isClosed_ = false;
  std::thread thread_;
};

}  // namespace tavrix
