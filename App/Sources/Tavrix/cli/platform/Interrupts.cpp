#include "cli/platform/Interrupts.h"

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

namespace tavrix::cli {
namespace {

constexpr int endSignal = SIGUSR1;
constexpr int statusOfInterrupt = 130;

sigset_t watchedSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int number : {SIGINT, SIGTERM, SIGHUP, endSignal}) sigaddset(&set, number);
  return set;
}

}  // namespace

Interrupts::Interrupts() { ::signal(SIGPIPE, SIG_IGN); }

Interrupts::~Interrupts() {
  if (!watcher_.joinable()) return;
  ::pthread_kill(watcher_.native_handle(), endSignal);
  watcher_.join();
}

std::stop_token Interrupts::token() {
  if (!watcher_.joinable()) {
    // Threads started from now on leave these signals to the watcher.
    const sigset_t set = watchedSignals();
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
    watcher_ = std::thread{[this] { watch(); }};
  }
  return source_.get_token();
}

void Interrupts::watch() {
  const sigset_t set = watchedSignals();
  for (int number = 0; ::sigwait(&set, &number) == 0 && number != endSignal;) {
    if (!source_.request_stop()) ::_exit(statusOfInterrupt);
  }
}

}  // namespace tavrix::cli
