#include <gmock/gmock.h>

#include <thread>
#include <vector>

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

TEST(MainLoop, standardLoop_runsOtherThreadsTasksOnItsOwn) {
  StandardMainLoop loop;
  std::vector<int> ran;
  std::thread::id runner;
  std::thread other{[&] {
    for (int number = 0; number < 1000; ++number) {
      loop.post([&ran, &runner, number] {
        ran.push_back(number);
        runner = std::this_thread::get_id();
      });
    }
  }};
  loop.postAfter(milliseconds{2}, [&] { ran.push_back(-1); });
  loop.runUntil([&] { return ran.size() == 1001; });
  other.join();
  EXPECT_EQ(runner, std::this_thread::get_id());
  std::erase(ran, -1);
  EXPECT_TRUE(std::is_sorted(ran.begin(), ran.end()));
}

}  // namespace
}  // namespace tavrix
