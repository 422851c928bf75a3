// The model, its watcher and a phone on a simulated cable, on real threads.

#include "sources/FollowedDevice.h"

#include "device/metadata/tests/support/SampleFiles.h"
#include "sources/tests/CableSession.h"

namespace tavrix {
namespace {

struct FollowedDeviceTest : testing::Test {
  FollowedDeviceTest() {
    for (int i = 0; i < 8; ++i) {
      const std::string name = fmt::format("IMG_{:04}.JPG", i);
      content[name] = testbytes::sampleFiles().front().bytes + std::string(200'000, 'x') + name;
      cable.write("100APPLE/" + name, content[name]);
    }
  }
  /// Transfers until the phone leaves in the middle of a file.
  void transferUntilThePhoneGoes() {
    cable.plugIn([](SimulatedPhone& phone) { phone.vanishesAfterBytes = 700'000; });
    ASSERT_NO_FATAL_FAILURE(session.startTransfer(content.size()));
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

  template <typename Condition>
  [[nodiscard]] bool runUntil(Condition isDone) {
    return session.runUntil(isDone);
  }
  bool isDone() const { return session.isDone(); }

  SimulatedCable cable;
  std::map<std::string, std::string> content;
  CableSession session{cable};
  AppModel& model = session.model;
  DeviceWatcher& watcher = session.watcher;
};

TEST_F(FollowedDeviceTest, phonePulledAndPutBack_endsWithEveryPictureWhole) {
  ASSERT_NO_FATAL_FAILURE(transferUntilThePhoneGoes());
  cable.plugIn();
  ASSERT_TRUE(runUntil([&] { return isDone(); }));
  EXPECT_EQ(std::get<app_phase::Done>(model.state().phase).report->copied, 8U);
  EXPECT_EQ(session.records, 1);
  EXPECT_EQ(session.copiesOf(content), content);

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
  session.loop.runDue();
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
  EXPECT_EQ(session.copiesOf(content).size(), report.copied);
  // The other phone is read when the run is over.
  model.leaveSummary();
  ASSERT_TRUE(runUntil([&] { return watcher.state().is<DeviceState::Ready>(); }));
}

}  // namespace
}  // namespace tavrix
