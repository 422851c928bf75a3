#pragma once

#include <atomic>
#include <stop_token>
#include <thread>

namespace tavrix::cli {

/// Turns SIGINT, SIGTERM and SIGHUP into a request to stop, from the first call of token() on;
/// until then they end the program as usual. A second one ends it at once with status 130. One
/// object for a program, made before any other thread is started.
class Interrupts {
 public:
  /// A write to a pipe that nobody reads fails instead of ending the program.
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
