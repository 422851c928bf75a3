#pragma once

#include <atomic>
#include <stop_token>
#include <thread>

namespace tavrix::cli {

/// Turns SIGINT, SIGTERM and SIGHUP into a request to stop, from the first call of token() on.
/// Until then they end the program as usual. A second signal ends the program at once with status
/// 130. A program has one object, created before it starts any other thread.
class Interrupts {
 public:
  /// Also ignores SIGPIPE, so that a write to a closed pipe fails instead of ending the program.
  Interrupts();
  ~Interrupts();
  Interrupts(const Interrupts&) = delete;
  Interrupts& operator=(const Interrupts&) = delete;

  std::stop_token token();

 private:
  void watch();

  std::atomic<bool> isHeeded_ = false;
  std::stop_source source_;
  std::thread watcher_;
};

}  // namespace tavrix::cli
