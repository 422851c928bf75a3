#pragma once

#include <signal.h>

#include <atomic>
#include <functional>
#include <stop_token>
#include <thread>

namespace tavrix::cli {

/// Turns SIGINT, SIGTERM and SIGHUP into a request to stop, from the first call of token() on.
/// Before that call they end the program as usual. A second signal ends the program at once with
/// status 130, without running destructors. Signals that the parent process ignores (nohup) stay
/// ignored. Reserves SIGUSR1. Create only one object, before the program starts any other thread.
class Interrupts {
 public:
  /// Also ignores SIGPIPE, so that a write to a closed pipe fails instead of ending the program.
  /// Calls `atEnd`, on a thread of its own, when a signal ends the program.
  explicit Interrupts(std::function<void()> atEnd = [] {});
  ~Interrupts();
  Interrupts(const Interrupts&) = delete;
  Interrupts& operator=(const Interrupts&) = delete;

  /// Returns the token of the request. May be called from any thread and more than once.
  std::stop_token token();

 private:
  void watch();

  std::function<void()> atEnd_;
  sigset_t watched_;
  std::atomic<bool> isTokenTaken_ = false;
  std::stop_source source_;
  std::thread watcher_;
};

}  // namespace tavrix::cli
