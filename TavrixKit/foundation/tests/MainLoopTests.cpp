#include <gmock/gmock.h>

#include <vector>

#include "foundation/tests/support/MainLoopContract.h"
#include "foundation/tests/support/ManualMainLoop.h"

namespace tavrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

TEST(MainLoop, tasks_runByMomentAndThenByOrder) {
  ManualMainLoop loop;
  std::vector<int> ran;
  const auto note = [&](int number) { return [&ran, number] { ran.push_back(number); }; };
  loop.postAfter(milliseconds{20}, note(4));
  loop.postAfter(milliseconds{10}, note(2));
  loop.postAfter(milliseconds{10}, note(3));
  loop.post(note(1));
  loop.runDue();
  EXPECT_THAT(ran, ElementsAre(1));
  loop.advance(milliseconds{10});
  EXPECT_THAT(ran, ElementsAre(1, 2, 3));
  loop.advance(milliseconds{9});
  EXPECT_THAT(ran, ElementsAre(1, 2, 3));
  loop.advance(milliseconds{1});
  EXPECT_THAT(ran, ElementsAre(1, 2, 3, 4));
}

TEST(MainLoop, taskPostedByATask_runsAtItsMoment) {
  ManualMainLoop loop;
  std::vector<MainLoop::Duration> ran;
  const auto start = loop.now();
  std::function<void()> poll = [&] {
    ran.push_back(loop.now() - start);
    if (ran.size() < 3) loop.postAfter(milliseconds{5}, poll);
  };
  loop.postAfter(milliseconds{5}, poll);
  loop.advance(milliseconds{100});
  EXPECT_THAT(ran, ElementsAre(milliseconds{5}, milliseconds{10}, milliseconds{15}));
  EXPECT_EQ(loop.now() - start, milliseconds{100});
}

TEST(MainLoop, standardLoop_keepsTheContract) {
  StandardMainLoop loop;
  checkMainLoopContract(loop, [&](const auto& isDone) { loop.runUntil(isDone); });
}

}  // namespace
}  // namespace tavrix
