#include "cli/platform/Interrupts.h"

#include <pthread.h>
#include <unistd.h>

namespace tavrix::cli {
namespace {

constexpr int endSignal = SIGUSR1;
constexpr int statusOfInterrupt = 130;

bool isIgnored(int number) {
  struct sigaction current{};
  return ::sigaction(number, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

/// Returns the signals that the watcher waits for. Omits signals that are ignored: if they were
/// blocked, sigwait() would return them nevertheless.
sigset_t watchedSignals() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, endSignal);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    if (!isIgnored(number)) sigaddset(&set, number);
  }
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

Interrupts::Interrupts(std::function<void()> atEnd)
    : atEnd_(std::move(atEnd)), watched_(watchedSignals()) {
  ::signal(SIGPIPE, SIG_IGN);
  // Threads inherit the mask, so only the watcher receives these signals.
  ::pthread_sigmask(SIG_BLOCK, &watched_, nullptr);
  watcher_ = std::thread{[this] { watch(); }};
}

Interrupts::~Interrupts() {
  ::pthread_kill(watcher_.native_handle(), endSignal);
  watcher_.join();
  if (isTokenTaken_) return;
  // A signal that came too late for the watcher also ends the program as usual.
  ::pthread_sigmask(SIG_UNBLOCK, &watched_, nullptr);
}

std::stop_token Interrupts::token() {
  isTokenTaken_ = true;
  return source_.get_token();
}

void Interrupts::watch() {
  for (int number = 0; ::sigwait(&watched_, &number) == 0 && number != endSignal;) {
    const bool isSecond = isTokenTaken_ && !source_.request_stop();
    if (isTokenTaken_ && !isSecond) continue;
    atEnd_();
    if (isSecond) ::_exit(statusOfInterrupt);
    endAsUsual(number);
  }
}

}  // namespace tavrix::cli
