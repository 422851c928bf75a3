// The model, its watcher and a phone on a simulated cable, on real threads.

#include "sources/FollowedDevice.h"

#include <gmock/gmock.h>

#include "device/cable/tests/support/SimulatedCable.h"
#include "device/metadata/tests/support/SampleFiles.h"
#include "foundation/tests/support/ManualMainLoop.h"

namespace tavrix {
namespace {

using namespace std::chrono_literals;

struct FollowedDeviceTest : testing::Test {
  FollowedDeviceTest() {
    for (int i = 0; i < 8; ++i) {
      const std::string name = fmt::format("IMG_{:04}.JPG", i);
      content[name] = testbytes::sampleFiles().front().bytes + std::string(200'000, 'x') + name;
      cable.write("100APPLE/" + name, content[name]);
    }
  }
  Background queueOf(SerialQueue& queue) {
    return [&queue](std::function<void()> work) { queue.post(std::move(work)); };
  }
  /// Runs the loop, with time passing whenever nothing is due.
  template <typename Condition>
  [[nodiscard]] bool runUntil(Condition isDone) {
    for (int i = 0; i < 1000; ++i) {
      if (loop.runUntil(isDone, 0s) || isDone()) return true;
      std::this_thread::sleep_for(10ms);
      loop.advance(500ms);
    }
    return false;
  }
  /// Transfers until the phone leaves in the middle of a file.
  void transferUntilThePhoneGoes() {
    cable.plugIn([](SimulatedPhone& phone) { phone.vanishesAfterBytes = 700'000; });
    watcher.start();
    model.setDestination(destination.path());
    ASSERT_TRUE(runUntil([&] { return model.state().newFilesCount == 8; }));
    model.startTransfer();
    ASSERT_TRUE(runUntil([&] { return model.state().pause.has_value(); }));
  }
  /// The states of the phone that an observer of the model saw, one after another.
  std::vector<std::size_t> seenStates;
  AppModel::Subscription observe() {
    return model.subscribe([this](const StateChange& change) {
      const std::size_t state = change.after.device->state.kind.index();
      if (seenStates.empty() || seenStates.back() != state) seenStates.push_back(state);
    });
  }
  bool isDone() const { return std::holds_alternative<app_phase::Done>(model.state().phase); }

  SimulatedCable cable;
  TemporaryFolder destination;
  std::map<std::string, std::string> content;
  ManualMainLoop loop;
  std::atomic<int> records = 0;
  SerialQueue background;
  SerialQueue transferring;
  AppModel model{{.loop = loop,
                  .background = queueOf(background),
                  .transferring = queueOf(transferring),
                  .now = [] { return Instant{std::chrono::hours{24 * 20700}}; },
                  .newID = randomUuid,
                  .keepRecord =
                      [this](const TransferRecord& record) {
                        if (record.status == TransferRecord::Status::completed) ++records;
                        return true;
                      }},
                 Settings{}};
  DeviceWatcher watcher{
      {.browser = cable.browser(), .loop = loop, .cacheDirectory = std::nullopt, .now = [] {
         return Instant{};
       }}};
  FollowedDevice followed{{model, watcher, cable.browser()}};
};

TEST_F(FollowedDeviceTest, phonePulledAndPutBack_endsWithEveryPictureWhole) {
  ASSERT_NO_FATAL_FAILURE(transferUntilThePhoneGoes());
  cable.plugIn();
  ASSERT_TRUE(runUntil([&] { return isDone(); }));
  EXPECT_EQ(std::get<app_phase::Done>(model.state().phase).report->copied, 8U);
  EXPECT_EQ(records, 1);
  std::size_t whole = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator{destination.path()}) {
    const auto found = content.find(entry.path().filename().string());
    if (found == content.end()) continue;
    const std::string path = std::filesystem::relative(entry.path(), destination.path()).string();
    EXPECT_EQ(destination.read(path), found->second) << path;
    ++whole;
  }
  EXPECT_EQ(whole, content.size());

  cable.unplugAll();
  ASSERT_TRUE(runUntil([&] {
    return watcher.state().is<DeviceState::Failed>() || watcher.state().is<DeviceState::Waiting>();
  }));
}

TEST_F(FollowedDeviceTest, phone_isDisplayedInEveryState) {
  const auto subscription = observe();
  cable.plugIn([](SimulatedPhone& phone) { phone.isLocked = true; });
  watcher.start();
  ASSERT_TRUE(runUntil([&] { return watcher.state().is<DeviceState::Locked>(); }));
  cable.plugIn();
  ASSERT_TRUE(runUntil([&] { return !model.state().displayGroups->empty(); }));
  cable.plugInAll({});
  ASSERT_TRUE(runUntil([&] { return watcher.state().is<DeviceState::Waiting>(); }));
  ASSERT_TRUE(runUntil([&] { return model.state().device->state == watcher.state(); }));
  loop.runDue();
  for (const DeviceState::Kind& kind :
       {DeviceState::Kind{DeviceState::Locked{}}, DeviceState::Kind{DeviceState::Ready{}},
        DeviceState::Kind{DeviceState::Waiting{}}}) {
    EXPECT_THAT(seenStates, testing::Contains(kind.index()));
  }
}

TEST_F(FollowedDeviceTest, cancelWhileThePhoneIsAway_endsTheRunWithWhatIsThere) {
  ASSERT_NO_FATAL_FAILURE(transferUntilThePhoneGoes());
  // Another phone that is connected meanwhile is not read during this run.
  SimulatedPhone other;
  other.deviceID = "00008110-0000000000000002";
  other.serialNumber = "OTHER";
  other.root = cable.root();
  cable.plugInAll({other});
  ASSERT_TRUE(runUntil([&] { return watcher.others().size() == 1; }));
  EXPECT_TRUE(model.state().pause.has_value());
  EXPECT_EQ(model.state().device->others, watcher.others());
  model.cancelTransfer();
  ASSERT_TRUE(runUntil([&] { return isDone(); }));
  EXPECT_EQ(model.run()->outcome.status, TransferRecord::Status::cancelled);
  EXPECT_EQ(model.run()->outcome.phoneWaits, 1);
  const auto& report = *std::get<app_phase::Done>(model.state().phase).report;
  EXPECT_LT(report.copied, 8U);
  std::size_t onDisk = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator{destination.path()}) {
    EXPECT_NE(entry.path().extension(), ".part");
    if (content.contains(entry.path().filename().string())) ++onDisk;
  }
  EXPECT_EQ(onDisk, report.copied);
  // The other phone is read when the run is over.
  model.leaveSummary();
  ASSERT_TRUE(runUntil([&] { return watcher.state().is<DeviceState::Ready>(); }));
}

}  // namespace
}  // namespace tavrix
