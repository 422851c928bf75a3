#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <thread>
#include <vector>

#include "foundation/tasks/MainLoop.h"

namespace tavrix {

/// Checks what every main loop in real time promises. `runUntil` runs the loop on the calling
/// thread until the condition holds.
inline void checkMainLoopContract(
    MainLoop& loop, const std::function<void(const std::function<bool()>&)>& runUntil) {
  using std::chrono::milliseconds;
  // Tasks run by their moments, and then by the order of the posts.
  std::vector<int> ran;
  const auto note = [&](int number) { return [&ran, number] { ran.push_back(number); }; };
  const auto start = loop.now();
  loop.postAfter(milliseconds{40}, note(4));
  loop.postAfter(milliseconds{20}, note(3));
  loop.post([&] {
    ran.push_back(1);
    loop.post(note(2));
  });
  runUntil([&] { return ran.size() == 4; });
  EXPECT_THAT(ran, testing::ElementsAre(1, 2, 3, 4));
  EXPECT_GE(loop.now() - start, milliseconds{40});

  // Tasks of other threads run on the loop's own thread, in their order.
  std::vector<std::thread::id> runners;
  ran.clear();
  std::thread other{[&] {
    for (int number = 0; number < 1000; ++number) {
      loop.post([&ran, &runners, number] {
        ran.push_back(number);
        runners.push_back(std::this_thread::get_id());
      });
    }
  }};
  loop.postAfter(milliseconds{2}, [&] { runners.push_back(std::this_thread::get_id()); });
  runUntil([&] { return runners.size() == 1001; });
  other.join();
  EXPECT_THAT(runners, testing::Each(std::this_thread::get_id()));
  EXPECT_EQ(ran.size(), 1000U);
  EXPECT_TRUE(std::is_sorted(ran.begin(), ran.end()));
}

}  // namespace tavrix
