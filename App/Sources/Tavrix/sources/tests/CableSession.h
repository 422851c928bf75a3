#pragma once

#include <gmock/gmock.h>

#include <atomic>
#include <filesystem>
#include <map>
#include <string>
#include <thread>

#include "device/cable/tests/support/SimulatedCable.h"
#include "foundation/tests/support/ManualMainLoop.h"
#include "sources/FollowedDevice.h"

namespace tavrix {

/// A model that follows the phones on a simulated cable, on real threads and a loop of its own.
class CableSession {
 public:
  explicit CableSession(SimulatedCable& cable) : cable_(cable) {}

  /// Runs the loop, with time passing whenever nothing is due.
  template <typename Condition>
  [[nodiscard]] bool runUntil(Condition isDone) {
    using namespace std::chrono_literals;
    for (int i = 0; i < 1000; ++i) {
      if (loop.runUntil(isDone, 0s) || isDone()) return true;
      std::this_thread::sleep_for(10ms);
      loop.advance(500ms);
    }
    return false;
  }
  /// Starts a transfer as soon as all `files` of the phone are known.
  void startTransfer(std::uint64_t files) {
    watcher.start();
    model.setDestination(destination.path());
    ASSERT_TRUE(runUntil([&] { return model.state().newFilesCount == files; }));
    model.startTransfer();
  }
  bool isDone() const { return std::holds_alternative<app_phase::Done>(model.state().phase); }
  /// Returns the files at the destination, by name, that are also in `content`.
  std::map<std::string, std::string> copiesOf(const std::map<std::string, std::string>& content) {
    std::map<std::string, std::string> copies;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{destination.path()}) {
      const std::string name = entry.path().filename().string();
      EXPECT_NE(entry.path().extension(), ".part");
      if (!content.contains(name)) continue;
      copies[name] =
          destination.read(std::filesystem::relative(entry.path(), destination.path()).string());
    }
    return copies;
  }

 private:
  static Background queueOf(SerialQueue& queue) {
    return [&queue](std::function<void()> work) { queue.post(std::move(work)); };
  }

  SimulatedCable& cable_;

 public:
  TemporaryFolder destination;
  ManualMainLoop loop;
  std::atomic<int> records = 0;  ///< of runs that were completed

 private:
  SerialQueue background_;
  SerialQueue transferring_;
  SerialQueue looking_;

 public:
  AppModel model{{.loop = loop,
                  .background = queueOf(background_),
                  .transferring = queueOf(transferring_),
                  .looking = queueOf(looking_),
                  .now = [] { return Instant{std::chrono::hours{24 * 20700}}; },
                  .newID = randomUuid,
                  .keepRecord =
                      [this](const TransferRecord& record) {
                        if (record.status == TransferRecord::Status::completed) ++records;
                        return true;
                      }},
                 Settings{}};
  DeviceWatcher watcher{
      {.browser = cable_.browser(), .loop = loop, .cacheDirectory = std::nullopt, .now = [] {
         return Instant{};
       }}};
  FollowedDevice followed{{model, watcher, cable_.browser()}};
};

}  // namespace tavrix
