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

/// Raises a signal with its usual effect.
void endAsUsual(int number) {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, number);
  ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
  ::raise(number);
}

}  // namespace

Interrupts::Interrupts() {
  ::signal(SIGPIPE, SIG_IGN);
  // Threads inherit the mask, so only the watcher receives these signals.
  const sigset_t set = watchedSignals();
  ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
  watcher_ = std::thread{[this] { watch(); }};
}

Interrupts::~Interrupts() {
  ::pthread_kill(watcher_.native_handle(), endSignal);
  watcher_.join();
  if (isHeeded_) return;
  // A signal that came too late for the watcher also ends the program as usual.
  const sigset_t set = watchedSignals();
  ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}

std::stop_token Interrupts::token() {
  isHeeded_ = true;
  return source_.get_token();
}

void Interrupts::watch() {
  const sigset_t set = watchedSignals();
  for (int number = 0; ::sigwait(&set, &number) == 0 && number != endSignal;) {
    if (!isHeeded_) endAsUsual(number);
    if (!source_.request_stop()) ::_exit(statusOfInterrupt);
  }
}

}  // namespace tavrix::cli
