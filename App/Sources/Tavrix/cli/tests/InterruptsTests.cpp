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
  Interrupts interrupts;
  const std::stop_token token = interrupts.token();
  ::kill(::getpid(), SIGINT);
  if (!waitForStop(token)) ::_exit(1);
  ::kill(::getpid(), SIGTERM);
  std::this_thread::sleep_for(5s);
  ::_exit(2);
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
  EXPECT_EXIT(interruptTwice(), testing::ExitedWithCode(130), "");
}

TEST(InterruptsDeathTest, beforeTheRun_signalEndsTheProgramAsUsual) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        const Interrupts interrupts;
        ::kill(::getpid(), SIGINT);
      },
      testing::KilledBySignal(SIGINT), "");
}

}  // namespace
}  // namespace tavrix::cli
