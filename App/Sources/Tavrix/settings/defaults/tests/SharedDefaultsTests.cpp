// Several writers, threads and processes, some of which are killed, share one file of user
// defaults.

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "foundation/tests/support/TemporaryFolder.h"
#include "settings/defaults/FileDefaults.h"

namespace tavrix {
namespace {

using testing::IsEmpty;

constexpr int writerCount = 4;
constexpr int changesEach = 20;

std::string keyOf(int writer, int change) {
  return "writer" + std::to_string(writer) + "-" + std::to_string(change);
}

/// Adds keys of this writer and overwrites one that all writers share. Returns true if nothing
/// failed.
bool writeAll(const std::string& directory, int writer) {
  FileDefaults defaults{directory};
  for (int change = 0; change < changesEach; ++change) {
    defaults.apply({{keyOf(writer, change), JsonValue{static_cast<double>(change)}},
                    {"last", JsonValue{static_cast<double>(writer)}}});
  }
  return defaults.takeFaults().empty();
}

void expectEveryChange(const std::string& directory) {
  FileDefaults defaults{directory};
  EXPECT_THAT(defaults.takeFaults(), IsEmpty());
  EXPECT_EQ(defaults.keys().size(), writerCount * changesEach + 1U);
  for (int writer = 0; writer < writerCount; ++writer) {
    for (int change = 0; change < changesEach; ++change) {
      EXPECT_EQ(defaults.number(keyOf(writer, change)), change) << keyOf(writer, change);
    }
  }
}

/// Runs `child` in a forked process, which exits with status 0 if `child` returns true.
pid_t inProcess(const std::function<bool()>& child) {
  const pid_t process = ::fork();
  if (process == 0) ::_exit(child() ? 0 : 1);
  return process;
}

int statusOf(pid_t process) {
  int status = -1;
  ::waitpid(process, &status, 0);
  return status;
}

TEST(SharedDefaults, writersInThreads_loseNoChange) {
  const TemporaryFolder place;
  const std::string directory = place / "Tavrix";
  {
    std::vector<std::jthread> writers;
    for (int writer = 0; writer < writerCount; ++writer) {
      writers.emplace_back([=] { EXPECT_TRUE(writeAll(directory, writer)); });
    }
  }
  expectEveryChange(directory);
}

TEST(SharedDefaults, oneObjectInThreads_losesNoChange) {
  const TemporaryFolder place;
  FileDefaults defaults{place / "Tavrix"};
  {
    std::vector<std::jthread> writers;
    for (int writer = 0; writer < writerCount; ++writer) {
      writers.emplace_back([&, writer] {
        for (int change = 0; change < changesEach; ++change) {
          defaults.set(keyOf(writer, change), {static_cast<double>(change)});
          EXPECT_EQ(defaults.number(keyOf(writer, change)), change);
        }
      });
    }
  }
  defaults.set("last", {0.0});
  expectEveryChange(place / "Tavrix");
}

TEST(SharedDefaults, writersInProcesses_loseNoChange) {
  const TemporaryFolder place;
  const std::string directory = place / "Tavrix";
  std::vector<pid_t> writers;
  for (int writer = 0; writer < writerCount; ++writer) {
    writers.push_back(inProcess([&] { return writeAll(directory, writer); }));
  }
  for (const pid_t writer : writers) EXPECT_EQ(statusOf(writer), 0);
  expectEveryChange(directory);
}

TEST(SharedDefaults, writerKilledAtAnyMoment_leavesOneWholeVersion) {
  const TemporaryFolder place;
  const std::string directory = place / "Tavrix";
  const std::string filler(20'000, 'x');
  for (int round = 0; round < 25; ++round) {
    const pid_t writer = inProcess([&] {
      FileDefaults defaults{directory};
      for (double number = 0;; ++number) {
        const JsonValue both{number};
        defaults.apply({{"a", both}, {"filler", JsonValue{filler}}, {"z", both}});
      }
      return true;
    });
    // Also reads while the writer is running.
    const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds{800 * round};
    do {
      FileDefaults reading{directory};
      EXPECT_THAT(reading.takeFaults(), IsEmpty());
      EXPECT_EQ(reading.number("a"), reading.number("z"));
    } while (std::chrono::steady_clock::now() < end);
    ::kill(writer, SIGKILL);
    statusOf(writer);

    FileDefaults after{directory};
    EXPECT_EQ(after.number("a"), after.number("z"));
    after.set("kept" + std::to_string(round), {1.0});
    EXPECT_THAT(after.takeFaults(), IsEmpty());
  }
  const auto keys = FileDefaults{directory}.keys();
  EXPECT_EQ(std::count_if(keys.begin(), keys.end(),
                          [](const std::string& key) { return key.starts_with("kept"); }),
            25);
}

}  // namespace
}  // namespace tavrix
