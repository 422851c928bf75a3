#include "cli/platform/Interrupts.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>

namespace tavrix::cli {
namespace {

using namespace std::chrono_literals;

bool waitForStop(const std::stop_token& token) {
  for (int i = 0; i < 1000 && !token.stop_requested(); ++i) std::this_thread::sleep_for(5ms);
  return token.stop_requested();
}

void interruptTwice() {
  // A script that runs the tests in the background ignores SIGINT.
  ::signal(SIGINT, SIG_DFL);
  Interrupts interrupts{[] { std::fputs("line erased", stderr); }};
  const std::stop_token token = interrupts.token();
  ::kill(::getpid(), SIGINT);
  if (!waitForStop(token)) ::_exit(1);
  ::kill(::getpid(), SIGTERM);
  std::this_thread::sleep_for(5s);
  ::_exit(2);
}

/// Ends with status 0 if a SIGHUP that was ignored from the start requests no stop.
void hangUpIgnored() {
  ::signal(SIGHUP, SIG_IGN);
  Interrupts interrupts;
  const std::stop_token token = interrupts.token();
  ::kill(::getpid(), SIGHUP);
  std::this_thread::sleep_for(200ms);
  ::_exit(token.stop_requested() ? 1 : 0);
}

TEST(Interrupts, firstSignal_asksToStop) {
  Interrupts interrupts;
  const std::stop_token token = interrupts.token();
  EXPECT_FALSE(token.stop_requested());
  ::kill(::getpid(), SIGTERM);
  EXPECT_TRUE(waitForStop(token));
}

TEST(Interrupts, threadsOfAnyAge_leaveSignalsToTheWatcher) {
  Interrupts interrupts;
  // Started before the token is requested, like the threads that read the catalogue.
  const std::jthread early{[](const std::stop_token& stop) {
    while (!stop.stop_requested()) std::this_thread::sleep_for(1ms);
  }};
  const std::stop_token token = interrupts.token();
  ::kill(::getpid(), SIGTERM);
  EXPECT_TRUE(waitForStop(token));
}

TEST(InterruptsDeathTest, secondSignal_endsAtOnce) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(interruptTwice(), testing::ExitedWithCode(130), "^line erased$");
}

TEST(InterruptsDeathTest, ignoredSignal_staysIgnored) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(hangUpIgnored(), testing::ExitedWithCode(0), "");
}

TEST(InterruptsDeathTest, beforeTheRun_signalEndsTheProgramAsUsual) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        ::signal(SIGINT, SIG_DFL);
        const Interrupts interrupts;
        ::kill(::getpid(), SIGINT);
      },
      testing::KilledBySignal(SIGINT), "");
}

}  // namespace
}  // namespace tavrix::cli
