#include "Measure.h"

#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace tavrix::bench {

double seconds(const std::function<void()>& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

Duel duel(int rounds, const std::function<void()>& ours, const std::function<void()>& theirs) {
  Duel best{1e9, 1e9};
  for (int round = 0; round < rounds; ++round) {
    best.theirs = std::min(best.theirs, seconds(theirs));
    best.ours = std::min(best.ours, seconds(ours));
  }
  return best;
}

PeakMemory peakMemory(const std::function<void()>& work) {
  int channel[2];
  if (::pipe(channel) != 0) std::abort();
  const pid_t child = ::fork();
  if (child == 0) {
    struct rusage before{};
    struct rusage after{};
    struct rusage children{};
    ::getrusage(RUSAGE_SELF, &before);
    work();
    ::getrusage(RUSAGE_SELF, &after);
    ::getrusage(RUSAGE_CHILDREN, &children);
    const PeakMemory peak{static_cast<double>(after.ru_maxrss - before.ru_maxrss) * 1024,
                          static_cast<double>(children.ru_maxrss) * 1024};
    const bool isTold = ::write(channel[1], &peak, sizeof peak) == sizeof peak;
    ::_exit(isTold ? 0 : 1);
  }
  PeakMemory peak;
  const bool isRead = ::read(channel[0], &peak, sizeof peak) == sizeof peak;
  ::waitpid(child, nullptr, 0);
  ::close(channel[0]);
  ::close(channel[1]);
  if (!isRead) std::abort();
  return peak;
}

double peakBytes(const std::function<void()>& work) { return peakMemory(work).added; }

void shell(const std::string& command) {
  if (std::system(command.c_str()) == 0) return;
  std::fprintf(stderr, "failed: %s\n", command.c_str());
  std::exit(1);
}

std::string time(double value) { return fmt::format("{:.3f} s", value); }

namespace {
int missed = 0;
}  // namespace

int missedRows() { return missed; }

void print(const Row& row) {
  const bool isMet = row.ratio <= row.target;
  if (!isMet) ++missed;
  fmt::print("{:<76} {:>12} {:>12} {:>8.2f} {:>8.2f}  {}\n", row.what, row.ours, row.theirs,
             row.ratio, row.target, isMet ? "met" : "MISSED");
  std::fflush(stdout);
}

}  // namespace tavrix::bench
