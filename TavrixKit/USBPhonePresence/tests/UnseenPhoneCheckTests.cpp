#include "USBPhonePresence/UnseenPhoneCheck.h"

#include <gmock/gmock.h>

#include <vector>

#include "foundation/tests/support/RecordingLog.h"

namespace tavrix {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// Drives a check with a clock of its own, and calls it again when the check requested that.
struct UnseenPhoneCheckTest : testing::Test {
  /// Lets time pass in steps of a tenth of a second.
  void pass(std::chrono::milliseconds time) {
    for (const auto end = now + time; now < end;) {
      now += 100ms;
      if (!dueAt || now < *dueAt) continue;
      dueAt.reset();
      ++checks;
      take(check.checkedAgain(isPhoneOnBus, browserHasDevice, now, log));
    }
  }
  void tell(bool onBus, bool fromBrowser) {
    isPhoneOnBus = onBus;
    browserHasDevice = fromBrowser;
    take(check.updated(onBus, fromBrowser, now, log));
  }
  void take(const UnseenPhoneCheck::Next& next) {
    check = next.check;
    if (!next.checkAfter) return;
    EXPECT_FALSE(dueAt) << "two checks under way";
    dueAt = now + *next.checkAfter;
  }

  UnseenPhoneCheck check;
  UnseenPhoneCheck::Moment now{1000s};
  std::optional<UnseenPhoneCheck::Moment> dueAt;
  bool isPhoneOnBus = false;
  bool browserHasDevice = false;
  int checks = 0;
  RecordingLog log{true};
};

TEST_F(UnseenPhoneCheckTest, unseenPhone_isToldFromTwelveSecondsOn) {
  tell(true, false);
  for (const auto& [elapsed, isTold] :
       {std::pair{11900ms, false}, {11999ms, false}, {12000ms, true}, {3600000ms, true}}) {
    const auto next = check.updated(true, false, now + elapsed, log);
    EXPECT_EQ(next.check.phoneOnCableButUnseen, isTold) << elapsed.count();
    EXPECT_EQ(next.check.unseenSince, now);
  }
}

TEST_F(UnseenPhoneCheckTest, check_isScheduledOnceAndTellsOnce) {
  tell(true, false);
  pass(5s);
  tell(true, false);
  EXPECT_EQ(dueAt, UnseenPhoneCheck::Moment{1000s} + 12100ms);
  pass(7s);
  EXPECT_FALSE(check.phoneOnCableButUnseen);
  pass(100ms);
  EXPECT_TRUE(check.phoneOnCableButUnseen);
  tell(true, false);
  pass(60s);
  EXPECT_EQ(checks, 1);
  EXPECT_THAT(log.lines(),
              ElementsAre("usb: iPhone on the bus for 12.1 s, nothing from the browser"));
}

TEST_F(UnseenPhoneCheckTest, phoneThatLeavesOrIsHandedOver_endsTheWait) {
  for (const bool isHandedOver : {false, true}) {
    for (const auto wait : {11000ms, 13000ms}) {
      check = {};
      dueAt.reset();
      log.clear();
      tell(true, false);
      pass(wait);
      tell(isHandedOver, isHandedOver);
      EXPECT_FALSE(check.phoneOnCableButUnseen);
      EXPECT_FALSE(check.unseenSince);
      EXPECT_EQ(log.lines().back(), "usb: hand-over wait over");
      pass(20s);
      EXPECT_FALSE(check.phoneOnCableButUnseen);
    }
  }
}

TEST_F(UnseenPhoneCheckTest, phoneThatComesBack_waitsFromTheBeginning) {
  tell(true, false);
  pass(10s);
  tell(false, false);
  pass(1s);
  tell(true, false);
  // The check of the first wait runs when the second wait has just begun.
  pass(2s);
  EXPECT_EQ(checks, 1);
  EXPECT_FALSE(check.phoneOnCableButUnseen);
  pass(9s);
  EXPECT_FALSE(check.phoneOnCableButUnseen);
  pass(2s);
  EXPECT_TRUE(check.phoneOnCableButUnseen);
}

TEST_F(UnseenPhoneCheckTest, nothingOnTheBus_waitsForNothing) {
  tell(false, false);
  tell(false, true);
  tell(true, true);
  EXPECT_EQ(check, UnseenPhoneCheck{});
  EXPECT_FALSE(dueAt);
  EXPECT_THAT(log.lines(), IsEmpty());
}

}  // namespace
}  // namespace tavrix
