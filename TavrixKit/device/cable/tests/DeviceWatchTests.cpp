#include "device/cable/DeviceWatch.h"

#include <gmock/gmock.h>

namespace tavrix {
namespace {

using State = DeviceState;
using Watch = DeviceWatch;
using Reason = State::Failed::Reason;
using testing::ElementsAre;

PhoneOnCable phone(const std::string& id, PhoneState state = PhoneState::ready) {
  return {id, state, "Phone " + id, "S" + id, "iPhone14,5"};
}

/// Applies events one after another and keeps the results.
struct DeviceWatchTest : testing::Test {
  void take(Watch::Event event) {
    auto next = Watch::after(std::move(watch), std::move(event), wanted, 7);
    watch = std::move(next.watch);
    orders = next.orders;
    isNewState = next.isNewState;
  }
  void see(std::vector<PhoneOnCable> phones) { take(Watch::CableSeen{{true, std::move(phones)}}); }
  void readUpTo(std::size_t count) { take(Watch::MetadataRead{watch.reading, {10, 0, count}}); }
  void finishReading() { take(Watch::ReadingDone{watch.reading, {}, {}}); }

  Watch watch;
  Watch::Orders orders;
  bool isNewState = false;
  std::string wanted;
};

TEST_F(DeviceWatchTest, phoneThatIsReady_isReadFromListingToReady) {
  see({});
  EXPECT_FALSE(isNewState);
  see({phone("A")});
  EXPECT_EQ(watch.state.kind, State::Kind{State::Connecting{"Phone A"}});
  EXPECT_EQ(orders.read, phone("A"));
  take(Watch::ItemsFound{1, 3});
  EXPECT_EQ(watch.state.kind, (State::Kind{State::Enumerating{"Phone A", 3, 7}}));
  take(Watch::ItemsFound{1, 3});
  EXPECT_FALSE(isNewState);
  readUpTo(4);
  EXPECT_EQ(watch.state.kind, (State::Kind{State::ReadingMetadata{"Phone A", {10, 0, 4}}}));
  see({phone("A")});
  EXPECT_FALSE(isNewState);
  finishReading();
  ASSERT_TRUE(watch.state.is<State::Ready>());
  EXPECT_EQ(watch.state.as<State::Ready>()->phone, phone("A"));
  see({phone("A")});
  EXPECT_EQ(orders, Watch::Orders{});
  see({});
  EXPECT_TRUE(watch.state.is<State::Waiting>());
}

TEST_F(DeviceWatchTest, obstacles_eachHaveTheirState) {
  const std::vector<std::pair<PhoneState, State::Kind>> rows{
      {PhoneState::locked, State::Locked{"Phone A"}},
      {PhoneState::trustPending, State::Connecting{"Phone A", true}},
      {PhoneState::trustDenied, State::Failed{Reason::trustDenied, "Phone A"}},
      {PhoneState::silent, State::Failed{Reason::silent, "Phone A"}},
      {PhoneState::unreachable, State::Connecting{"Phone A"}},
  };
  for (const auto& [state, expected] : rows) {
    watch = {};
    see({phone("A", state)});
    EXPECT_EQ(watch.state.kind, expected) << textOf(state);
    EXPECT_FALSE(orders.read) << textOf(state);
    see({phone("A")});
    EXPECT_TRUE(orders.read) << textOf(state);
  }
  watch = {};
  see({phone("A", PhoneState::unreachable)});
  see({phone("A", PhoneState::unreachable)});
  EXPECT_EQ(watch.state.kind, (State::Kind{State::Failed{Reason::unreachable, "Phone A"}}));
}

TEST_F(DeviceWatchTest, phoneThatFallsSilent_keepsItsName) {
  see({phone("A", PhoneState::locked)});
  PhoneOnCable silent = phone("A", PhoneState::silent);
  silent.name.reset();
  see({silent});
  EXPECT_EQ(watch.state.kind, (State::Kind{State::Failed{Reason::silent, "Phone A"}}));
}

TEST_F(DeviceWatchTest, serviceThatIsMissing_isToldUntilItIsThere) {
  take(Watch::CableSeen{{false, {}}});
  EXPECT_EQ(watch.state.kind, (State::Kind{State::Failed{Reason::noService, ""}}));
  see({});
  EXPECT_TRUE(watch.state.is<State::Waiting>());
  see({phone("A")});
  take(Watch::CableSeen{{false, {}}});
  EXPECT_TRUE(watch.isReading) << "it finds out by itself";
}

TEST_F(DeviceWatchTest, readingThatMeetsAnObstacle_showsItAndAsksThePhoneAnew) {
  using Kind = PhoneError::Kind;
  const State::Stopped left{"Phone A", {10, 0, 4}, State::Stopped::Reason::phoneLeft};
  const std::vector<std::pair<Kind, State::Kind>> rows{
      {Kind::gone, left},
      {Kind::noService, left},
      {Kind::locked, State::Locked{"Phone A"}},
      {Kind::trustPending, State::Connecting{"Phone A", true}},
      {Kind::trustDenied, State::Failed{Reason::trustDenied, "Phone A"}},
      {Kind::silent, State::Failed{Reason::silent, "Phone A"}},
  };
  for (const auto& [kind, expected] : rows) {
    watch = {};
    see({phone("A")});
    readUpTo(4);
    take(Watch::ReadingLost{1, kind});
    EXPECT_EQ(watch.state.kind, expected);
    EXPECT_TRUE(orders.lookAnew);
    see({phone("A")});
    EXPECT_EQ(watch.reading, 2U) << "it is read again when it can be";
  }
}

TEST_F(DeviceWatchTest, phoneThatLeavesWhileRead_isReadAgainWhenItIsBack) {
  see({phone("A")});
  readUpTo(4);
  see({});
  EXPECT_TRUE(orders.endReading);
  const auto stopped = watch.state;
  EXPECT_EQ(
      stopped.kind,
      (State::Kind{State::Stopped{"Phone A", {10, 0, 4}, State::Stopped::Reason::phoneLeft}}));
  see({});
  EXPECT_EQ(watch.state, stopped);
  see({phone("A", PhoneState::locked)});
  EXPECT_TRUE(watch.state.is<State::Locked>());
  see({phone("A")});
  EXPECT_EQ(orders.read, phone("A"));
  EXPECT_EQ(watch.reading, 2U);
}

TEST_F(DeviceWatchTest, reportsOfAReadingThatIsOver_countForNothing) {
  see({phone("A")});
  readUpTo(4);
  see({phone("B")});
  EXPECT_TRUE(orders.endReading);
  EXPECT_EQ(orders.read, phone("B"));
  const Watch before = watch;
  const std::vector<Watch::Event> late{Watch::ItemsFound{1, 9}, Watch::MetadataRead{1, {9, 9, 9}},
                                       Watch::ReadingDone{1, {}, {}}, Watch::FolderRefused{1},
                                       Watch::ReadingLost{1, PhoneError::Kind::gone}};
  for (const auto& event : late) take(event);
  EXPECT_EQ(watch, before);
  take(Watch::StopAsked{});
  const Watch stopped = watch;
  for (auto event : late) {
    std::visit(
        [&](auto& each) {
          if constexpr (requires { each.reading; }) each.reading = 2;
        },
        event);
    take(std::move(event));
  }
  EXPECT_EQ(watch, stopped);
}

TEST_F(DeviceWatchTest, readingThatIsStopped_beginsAgainWhenAskedOrPluggedInAnew) {
  see({phone("A")});
  take(Watch::ItemsFound{1, 3});
  take(Watch::StopAsked{});
  EXPECT_TRUE(orders.endReading);
  EXPECT_EQ(watch.state.kind, (State::Kind{State::Stopped{"Phone A", {3, 0, 0}}}));
  see({phone("A")});
  EXPECT_FALSE(orders.read);
  take(Watch::StartAsked{});
  EXPECT_EQ(orders.read, phone("A"));
  take(Watch::StartAsked{});
  EXPECT_EQ(watch.reading, 2U);
  take(Watch::StopAsked{});
  take(Watch::StopAsked{});
  EXPECT_EQ(orders, Watch::Orders{});
  see({});
  EXPECT_TRUE(watch.state.is<State::Waiting>());
  take(Watch::StartAsked{});
  EXPECT_FALSE(orders.read);
  see({phone("A")});
  EXPECT_TRUE(orders.read);
}

TEST_F(DeviceWatchTest, folderThatIsRefused_isTriedAgainOnlyWhenAsked) {
  see({phone("A")});
  take(Watch::FolderRefused{1});
  EXPECT_EQ(watch.state.kind, (State::Kind{State::Failed{Reason::folderRefused, "Phone A"}}));
  see({phone("A")});
  EXPECT_FALSE(orders.read);
  take(Watch::StartAsked{});
  EXPECT_TRUE(orders.read);
}

TEST_F(DeviceWatchTest, severalPhones_theFirstStaysAndTheOthersAreListed) {
  see({phone("B", PhoneState::locked)});
  see({phone("A"), phone("B", PhoneState::locked)});
  EXPECT_EQ(watch.state.kind, (State::Kind{State::Locked{"Phone B"}}));
  EXPECT_THAT(watch.others, ElementsAre(phone("A")));
  see({phone("A")});
  EXPECT_EQ(orders.read, phone("A"));
  EXPECT_THAT(watch.others, ElementsAre());
}

TEST_F(DeviceWatchTest, wantedPhone_isTheOnlyOneRead) {
  for (const std::string name : {"B", "SB", "s-b"}) {
    watch = {};
    wanted = name;
    see({phone("A")});
    EXPECT_TRUE(watch.state.is<State::Waiting>());
    EXPECT_THAT(watch.others, ElementsAre(phone("A")));
    see({phone("A"), phone("B")});
    EXPECT_EQ(orders.read, phone("B"));
  }
}

}  // namespace
}  // namespace tavrix
