#include "device/cable/DeviceWatcher.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <map>
#include <set>

#include "device/cable/tests/support/SimulatedCable.h"
#include "device/metadata/tests/support/SampleFiles.h"
#include "foundation/Digest.h"
#include "foundation/files/FileError.h"
#include "foundation/tests/support/ManualMainLoop.h"

namespace tavrix {
namespace {

using namespace std::chrono_literals;
using State = DeviceState;
using testing::ElementsAre;

/// A bus with or without a phone.
struct FakeBus : USBPhonePresence {
  void start(std::function<void()> onChange) override { changed = std::move(onChange); }
  bool isPhoneOnBus() const override { return hasPhone; }
  void put(bool isThere) {
    hasPhone = isThere;
    changed();
  }
  std::function<void()> changed;
  std::atomic<bool> hasPhone{false};
};

struct FakeCounts : CatalogCounts {
  std::optional<std::uint64_t> count(const std::string& key) const override {
    asked.insert(key);
    const auto found = counts.find(key);
    return found == counts.end() ? std::nullopt : std::optional{found->second};
  }
  void setCount(const std::string& key, std::uint64_t count) override { counts[key] = count; }
  std::map<std::string, std::uint64_t> counts;
  mutable std::set<std::string> asked;
};

/// A watcher of the simulated cable, and everything that it reported, states by name.
struct DeviceWatcherTest : testing::Test {
  DeviceWatcherTest() {
    for (int i = 0; i < 6; ++i) addPicture("100APPLE/" + std::to_string(i) + ".JPG");
  }
  void addPicture(const std::string& path, int index = 0) const {
    cable.write(path, testbytes::sampleFiles().front().bytes, index);
  }
  DeviceWatcher& start() {
    watcher =
        std::make_unique<DeviceWatcher>(DeviceWatcher::Setup{.browser = cable.browser(),
                                                             .loop = loop,
                                                             .bus = &bus,
                                                             .counts = &counts,
                                                             .cacheDirectory = state / "state",
                                                             .now = [] { return Instant{}; }});
    subscription = watcher->subscribe(
        {.stateChanged = [this](const State& each) { note(each); },
         .unseenChanged = [this](bool isUnseen) { unseen.push_back(isUnseen); },
         .othersChanged = [this](const auto& others) { otherCounts.push_back(others.size()); }});
    watcher->start();
    return *watcher;
  }
  void note(const State& each) {
    constexpr const char* names[] = {"waiting", "locked",  "connecting", "enumerating",
                                     "reading", "stopped", "ready",      "failed"};
    const std::string name = names[each.kind.index()];
    if (told.empty() || told.back() != name) told.push_back(name);
    if (duringState) duringState(each);
  }
  /// Runs the loop until `isDone()` returns true, and scans the cable whenever nothing else is due.
  template <typename Condition>
  [[nodiscard]] bool runUntil(Condition isDone) {
    for (int i = 0; i < 600; ++i) {
      if (loop.runUntil(isDone, 0s) || isDone()) return true;
      std::this_thread::sleep_for(10ms);
      loop.advance(500ms);
    }
    return false;
  }
  template <typename Kind>
  [[nodiscard]] bool reach() {
    return runUntil([this] { return watcher->state().is<Kind>(); });
  }
  const State::Ready& ready() const { return *watcher->state().as<State::Ready>(); }

  SimulatedCable cable;
  TemporaryFolder state;
  ManualMainLoop loop;
  FakeBus bus;
  FakeCounts counts;
  std::vector<std::string> told;
  std::vector<bool> unseen;
  std::vector<std::size_t> otherCounts;
  std::function<void(const State&)> duringState;
  std::unique_ptr<DeviceWatcher> watcher;
  DeviceWatcher::Subscription subscription;
};

TEST_F(DeviceWatcherTest, phoneWithoutSerialNumber_isKeptAsUnknown) {
  cable.plugIn([](SimulatedPhone& phone) { phone.serialNumber = ""; });
  start();
  ASSERT_TRUE(reach<State::Ready>());
  EXPECT_TRUE(state.has("state/metadata-unknown.jsonl"));
}

TEST_F(DeviceWatcherTest, phone_isReadAsItsCatalogueAndCounted) {
  cable.plugIn([](SimulatedPhone& phone) { phone.name = "Аня"; });
  start();
  ASSERT_TRUE(reach<State::Ready>());
  EXPECT_EQ(ready().deviceName, "Аня");
  EXPECT_EQ(ready().assets->size(), 6U);
  EXPECT_EQ(ready().assets->front().id(), "100APPLE/0.JPG");
  EXPECT_EQ(ready().catalogue->progress.read, 6U);
  EXPECT_EQ(told.front(), "connecting");
  EXPECT_EQ(told.back(), "ready");
  EXPECT_EQ(counts.counts, (std::map<std::string, std::uint64_t>{
                               {"lastCatalogCount", 6}, {"lastCatalogCount-SIMULATED1", 6}}));
  EXPECT_THAT(counts.asked, ElementsAre("lastCatalogCount-SIMULATED1"));
  // When the phone is plugged in again, nothing is read twice.
  cable.plugInAll({});
  ASSERT_TRUE(reach<State::Waiting>());
  cable.plugIn();
  ASSERT_TRUE(reach<State::Ready>());
  EXPECT_EQ(ready().catalogue->progress.hits, 6U);
}

TEST_F(DeviceWatcherTest, person_isFollowedFromLockedToTrust) {
  auto& simulator = cable.plugIn([](SimulatedPhone& phone) {
    phone.isLocked = true;
    phone.trust = SimulatedPhone::Trust::pending;
  });
  start();
  ASSERT_TRUE(reach<State::Locked>());
  simulator.change(0, [](SimulatedPhone& phone) { phone.isLocked = false; });
  ASSERT_TRUE(runUntil([&] {
    const auto* connecting = watcher->state().as<State::Connecting>();
    return connecting != nullptr && connecting->awaitsTrust;
  }));
  simulator.change(0, [](SimulatedPhone& phone) { phone.trust = SimulatedPhone::Trust::denied; });
  ASSERT_TRUE(reach<State::Failed>());
  EXPECT_EQ(watcher->state().as<State::Failed>()->reason, State::Failed::Reason::trustDenied);
  simulator.change(0, [](SimulatedPhone& phone) { phone.trust = SimulatedPhone::Trust::asking; });
  EXPECT_TRUE(reach<State::Ready>());
}

TEST_F(DeviceWatcherTest, phoneThatLeavesWhileRead_isReadToItsEndWhenItIsBack) {
  const auto size = testbytes::sampleFiles().front().bytes.size();
  for (const std::uint64_t place : {std::uint64_t{0}, std::uint64_t{1}, 3 * size, 6 * size - 1}) {
    told.clear();
    state.write("state/none", "");
    std::filesystem::remove_all(state / "state");
    cable.plugIn([&](SimulatedPhone& phone) {
      phone.vanishesAfterBytes = place;
      phone.returnsAfter = 30ms;
    });
    start();
    ASSERT_TRUE(reach<State::Ready>()) << place;
    EXPECT_THAT(told, testing::Contains("stopped")) << place;
    EXPECT_EQ(ready().assets->size(), 6U);
    EXPECT_EQ(ready().catalogue->progress.hits, place / size) << place;
    watcher.reset();
  }
}

TEST_F(DeviceWatcherTest, phoneThatComesBackAsAnother_isReadAsTheOther) {
  addPicture("100APPLE/other.JPG", 1);
  cable.plugIn([](SimulatedPhone& phone) { phone.vanishesAfterBytes = 1; });
  duringState = [&](const State& each) {
    if (!each.is<State::Stopped>()) return;
    SimulatedPhone other;
    other.root = cable.root(1);
    other.deviceID = "00008110-0000000000000002";
    other.serialNumber = "SIMULATED2";
    other.name = "Other";
    cable.plugInAll({other});
  };
  start();
  ASSERT_TRUE(reach<State::Ready>());
  EXPECT_EQ(ready().deviceName, "Other");
  EXPECT_EQ(ready().assets->size(), 1U);
  EXPECT_TRUE(counts.counts.contains("lastCatalogCount-SIMULATED2"));
  EXPECT_FALSE(counts.counts.contains("lastCatalogCount-SIMULATED1"));
}

TEST_F(DeviceWatcherTest, readingThatIsStopped_endsSoonAndGoesOnFromTheCache) {
  cable.plugIn([](SimulatedPhone& phone) { phone.latency = 5ms; });
  duringState = [&](const State& each) {
    const auto* reading = each.as<State::ReadingMetadata>();
    if (reading != nullptr && reading->status.read == 2) watcher->stopReading();
  };
  start();
  ASSERT_TRUE(reach<State::Stopped>());
  EXPECT_EQ(watcher->state().as<State::Stopped>()->reason, State::Stopped::Reason::asked);
  EXPECT_GE(watcher->state().as<State::Stopped>()->status.read, 2U);
  // The reading ends meanwhile, and the cable is scanned; neither is reported.
  for (int i = 0; i < 20; ++i) {
    std::this_thread::sleep_for(5ms);
    loop.advance(500ms);
  }
  EXPECT_EQ(told.back(), "stopped");
  duringState = {};
  watcher->start();
  ASSERT_TRUE(reach<State::Ready>());
  EXPECT_GE(ready().catalogue->progress.hits, 2U);
  EXPECT_EQ(ready().assets->size(), 6U);
}

TEST_F(DeviceWatcherTest, watcherThatGoesWhileReading_leavesTheLoopNothingToDo) {
  cable.plugIn([](SimulatedPhone& phone) { phone.latency = 5ms; });
  start();
  ASSERT_TRUE(runUntil([&] {
    const auto* reading = watcher->state().as<State::ReadingMetadata>();
    return reading != nullptr && reading->status.read > 0;
  }));
  watcher.reset();
  told.clear();
  loop.advance(60s);
  EXPECT_THAT(told, ElementsAre());
  EXPECT_GE(MetadataCache::countCachedRecords(state / "state"), 1U);
}

TEST_F(DeviceWatcherTest, otherPhones_areListedAndTakeOverWhenTheFirstLeaves) {
  SimulatedPhone first;
  first.root = cable.root();
  SimulatedPhone second;
  second.root = cable.root(1);
  second.deviceID = "00008110-0000000000000002";
  second.name = "Second";
  second.isPluggedIn = false;
  addPicture("100APPLE/a.JPG", 1);
  auto& simulator = cable.plugInAll({second, first});
  start();
  ASSERT_TRUE(reach<State::Ready>());
  simulator.change(0, [](SimulatedPhone& phone) { phone.isPluggedIn = true; });
  ASSERT_TRUE(runUntil([&] { return watcher->others().size() == 1; }));
  EXPECT_EQ(ready().deviceName, "iPhone");
  simulator.change(1, [](SimulatedPhone& phone) { phone.isPluggedIn = false; });
  ASSERT_TRUE(runUntil(
      [&] { return watcher->state().is<State::Ready>() && ready().deviceName == "Second"; }));
  EXPECT_THAT(otherCounts, ElementsAre(1, 0));
}

TEST_F(DeviceWatcherTest, phoneOnTheBusThatNobodyHandsOver_isToldAfterTwelveSeconds) {
  cable.plugInAll({});
  start();
  bus.put(true);
  const auto since = loop.now();
  ASSERT_TRUE(runUntil([&] { return watcher->phoneOnCableButUnseen(); }));
  EXPECT_GE(loop.now() - since, 12s);
  cable.plugIn();
  ASSERT_TRUE(runUntil([&] { return !watcher->phoneOnCableButUnseen(); }));
  EXPECT_THAT(unseen, ElementsAre(true, false));
}

/// Ends the process as a program does that gave up a call: the call is still at work afterwards.
[[noreturn]] void exitWithWorkLeft() {
  std::atexit([] {
    // Runs after the functions that were registered later, the library's own among them.
    std::_Exit(md5Hex("").starts_with("d41d8cd9") ? 0 : 3);
  });
  static_cast<void>(md5Hex("the first use"));
  std::exit(4);
}

TEST(PhonesTest, callThatWasGivenUp_mayStillEncryptWhileTheProgramExits) {
  EXPECT_EXIT(exitWithWorkLeft(), testing::ExitedWithCode(0), "");
}

TEST_F(DeviceWatcherTest, phoneThatHangs_failsAndIsReadWhenItSpeaksAgain) {
  cable.setPatience(3s);
  auto& simulator = cable.plugIn([](SimulatedPhone& phone) { phone.hangsAfterBytes = 1000; });
  start();
  ASSERT_TRUE(reach<State::Failed>());
  EXPECT_EQ(watcher->state().as<State::Failed>()->reason, State::Failed::Reason::silent);
  EXPECT_EQ(watcher->state().as<State::Failed>()->deviceName, "iPhone");
  simulator.change(0, [](SimulatedPhone& phone) { phone.hangs = false; });
  ASSERT_TRUE(reach<State::Ready>());
  EXPECT_EQ(ready().assets->size(), 6U);
}

TEST_F(DeviceWatcherTest, serviceThatIsMissing_isToldAndWaitedFor) {
  start();
  ASSERT_TRUE(reach<State::Failed>());
  EXPECT_EQ(watcher->state().as<State::Failed>()->reason, State::Failed::Reason::noService);
  cable.plugIn();
  EXPECT_TRUE(reach<State::Ready>());
}

}  // namespace
}  // namespace tavrix
