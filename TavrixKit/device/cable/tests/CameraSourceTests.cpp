#include <gmock/gmock.h>
#include <signal.h>

#include <chrono>
#include <thread>

#include "device/cable/CameraMediaSource.h"
#include "device/cable/PhoneCatalogue.h"
#include "device/cable/tests/support/SimulatedCable.h"
#include "foundation/files/FileError.h"
#include "media/SnapshotItem.h"
#include "media/tests/MediaSourceContract.h"

namespace tavrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Trust = SimulatedPhone::Trust;

/// Keeps the bytes that arrive, and refuses more after a given number of bytes.
struct Received : DownloadDestination {
  struct Enough {};

  void append(std::span<const std::byte> bytes) override {
    if (isStopped) throw Enough{};
    text.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    isStopped = text.size() >= limit;
  }

  std::string text;
  std::size_t limit = SIZE_MAX;
  bool isStopped = false;
};

MediaAsset asset(const std::string& id, std::uint64_t size) {
  SnapshotItem item;
  item.name = id.substr(id.rfind('/') + 1);
  item.size = size;
  item.kind = "photo";
  return item.mediaAsset(id, TimeZone::utc());
}

/// Every test runs with and without encryption.
struct CameraSourceTest : testing::TestWithParam<bool> {
  CameraSourceTest() { ::signal(SIGPIPE, SIG_DFL); }

  PhoneSimulator& plugIn(const std::function<void(SimulatedPhone&)>& change = {}) {
    return cable.plugIn([&](SimulatedPhone& phone) {
      phone.usesTLS = GetParam();
      if (change) change(phone);
    });
  }
  CameraMediaSource source(std::function<bool(PhoneError::Kind)> awaitPhone = {}) const {
    return CameraMediaSource{{cable.browser(), SimulatedPhone{}.deviceID, std::move(awaitPhone)}};
  }
  static std::optional<SourceError::Kind> failureOf(CameraMediaSource& source,
                                                    const std::string& id, Received& received) {
    try {
      source.download(asset(id, 1), received);
      return std::nullopt;
    } catch (const SourceError& error) {
      return error.kind();
    }
  }

  SimulatedCable cable;
};

INSTANTIATE_TEST_SUITE_P(plainAndEncrypted, CameraSourceTest, testing::Bool());

class PhoneOnCableFiles : public StoredSource {
 public:
  explicit PhoneOnCableFiles(bool usesTLS)
      : simulator_(cable_.plugIn([&](SimulatedPhone& phone) { phone.usesTLS = usesTLS; })) {}

  MediaSource& source() override { return source_; }
  std::string root() const override { return cable_.root(); }
  void makeUnreadable(const MediaAsset& asset) override {
    simulator_.change(
        0, [&](SimulatedPhone& phone) { phone.unreadable = {std::string{asset.name()}}; });
  }

 private:
  SimulatedCable cable_;
  PhoneSimulator& simulator_;
  CameraMediaSource source_{{.browser = cable_.browser(), .deviceID = SimulatedPhone{}.deviceID}};
};

std::unique_ptr<StoredSource> makePlain() { return std::make_unique<PhoneOnCableFiles>(false); }
std::unique_ptr<StoredSource> makeEncrypted() { return std::make_unique<PhoneOnCableFiles>(true); }

INSTANTIATE_TEST_SUITE_P(CameraMediaSource, MediaSourceContract,
                         testing::Values(MediaSourceContract::ParamType{"plain", makePlain},
                                         MediaSourceContract::ParamType{"encrypted",
                                                                        makeEncrypted}));
INSTANTIATE_TEST_SUITE_P(CameraMediaSource, StoredSourceContract,
                         testing::Values(StoredSourceContract::ParamType{"plain", makePlain},
                                         StoredSourceContract::ParamType{"encrypted",
                                                                         makeEncrypted}));

TEST_P(CameraSourceTest, fileWhoseIdDoesNotSpellItsName_arrivesAllTheSame) {
  const std::string shown = "\xEF\xBF\xBD.JPG";
  cable.write("100APPLE/\x80.JPG", "first");
  cable.write("100APPLE/\xFF.JPG", "second");
  cable.write("100APPLE/a#2.JPG", "third");
  plugIn();
  const auto files = cable.browser().openFiles(SimulatedPhone{}.deviceID, {});
  const FolderCatalogue catalogue = PhoneCatalogue::read(
      *files, {.phoneKey = "x", .directory = {}, .now = [] { return Instant{}; }});
  CameraMediaSource camera{{.browser = cable.browser(),
                            .deviceID = SimulatedPhone{}.deviceID,
                            .oddPaths = catalogue.oddPaths}};
  for (const auto& [id, content] :
       {std::pair<std::string, std::string>{"100APPLE/" + shown, "first"},
        {"100APPLE/" + shown + "#2", "second"},
        {"100APPLE/a#2.JPG", "third"}}) {
    Received received;
    camera.download(asset(id, content.size()), received);
    EXPECT_EQ(received.text, content) << id;
  }
}

TEST_P(CameraSourceTest, phoneThatLeavesAndComesBack_goesOnWhereItWas) {
  const std::string content = bytesOf(5 * mebibyte / 2);
  cable.write("100APPLE/IMG_0001.MOV", content);
  for (const std::size_t place : {std::size_t{0}, std::size_t{1}, mebibyte - 1, mebibyte,
                                  mebibyte + 17, content.size() - 1}) {
    plugIn([&](SimulatedPhone& phone) {
      phone.vanishesAfterBytes = place;
      phone.returnsAfter = std::chrono::milliseconds{20};
    });
    std::vector<PhoneError::Kind> waits;
    auto camera = source([&](PhoneError::Kind kind) {
      waits.push_back(kind);
      std::this_thread::sleep_for(std::chrono::milliseconds{5});
      return true;
    });
    Received received;
    camera.download(asset("100APPLE/IMG_0001.MOV", content.size()), received);
    EXPECT_TRUE(received.text == content) << "left after " << place;
    EXPECT_FALSE(waits.empty()) << "left after " << place;
    EXPECT_EQ(waits.front(), PhoneError::Kind::gone);
  }
}

TEST_P(CameraSourceTest, phoneThatStaysAway_failsTheFileAndGivesNoWrongByte) {
  const std::string content = bytesOf(3 * mebibyte);
  cable.write("100APPLE/IMG_0001.MOV", content);
  for (const std::size_t place : {std::size_t{100}, mebibyte + 100, content.size() - 1}) {
    plugIn([&](SimulatedPhone& phone) { phone.vanishesAfterBytes = place; });
    auto camera = source();
    Received received;
    EXPECT_EQ(failureOf(camera, "100APPLE/IMG_0001.MOV", received),
              SourceError::Kind::disconnected);
    EXPECT_LE(received.text.size(), place);
    EXPECT_TRUE(content.starts_with(received.text)) << place;
  }
}

TEST_P(CameraSourceTest, fileThatIsAnotherWhenThePhoneIsBack_isNoMixtureOfBoth) {
  cable.write("100APPLE/IMG_0001.MOV", bytesOf(3 * mebibyte));
  plugIn([&](SimulatedPhone& phone) { phone.vanishesAfterBytes = 2 * mebibyte + 5; });
  auto camera = source([&](PhoneError::Kind) {
    cable.write("100APPLE/IMG_0001.MOV", std::string(4 * mebibyte, 'x'));
    plugIn();
    return true;
  });
  Received received;
  EXPECT_EQ(failureOf(camera, "100APPLE/IMG_0001.MOV", received),
            SourceError::Kind::changedWhileRead);
}

TEST_P(CameraSourceTest, pathThatIsNoRegularFile_isUnreadable) {
  cable.write("100APPLE/IMG_0001.JPG", "whole");
  std::filesystem::create_symlink("IMG_0001.JPG", cable.root() + "/DCIM/100APPLE/IMG_0002.JPG");
  plugIn();
  auto camera = source();
  for (const char* const id : {"100APPLE", "100APPLE/IMG_0002.JPG", "100APPLE/../../secret"}) {
    Received received;
    EXPECT_EQ(failureOf(camera, id, received), SourceError::Kind::unreadable) << id;
    EXPECT_EQ(received.text, "") << id;
  }
}

TEST_P(CameraSourceTest, cancel_endsTheDownloadAndTheSourceServesOn) {
  cable.write("100APPLE/long", bytesOf(8 * mebibyte));
  cable.write("100APPLE/short", "short");
  auto& simulator = plugIn();
  auto camera = source();
  Received received;
  received.limit = 1;
  EXPECT_THROW(camera.download(asset("100APPLE/long", 8 * mebibyte), received), Received::Enough);
  EXPECT_EQ(received.text.size(), mebibyte);
  EXPECT_LT(simulator.fileCalls(), 8U);
  Received next;
  camera.download(asset("100APPLE/short", 5), next);
  EXPECT_EQ(next.text, "short");
}

TEST_P(CameraSourceTest, cancelWhileThePhoneIsAway_isTheCallersOwn) {
  cable.write("100APPLE/long", bytesOf(2 * mebibyte));
  plugIn([](SimulatedPhone& phone) { phone.vanishesAfterBytes = 5; });
  Received received;
  auto camera = source([&](PhoneError::Kind) {
    received.isStopped = true;
    return false;
  });
  EXPECT_THROW(camera.download(asset("100APPLE/long", 2 * mebibyte), received), Received::Enough);
}

TEST_P(CameraSourceTest, phoneThatHangs_isGivenUpAndGoneOnWithWhenItSpeaks) {
  const std::string content = bytesOf(3 * mebibyte);
  cable.write("100APPLE/long", content);
  cable.setPatience(std::chrono::seconds{3});
  auto& simulator = plugIn([](SimulatedPhone& phone) { phone.hangsAfterBytes = 2 * mebibyte + 5; });
  std::vector<PhoneError::Kind> waits;
  auto camera = source([&](PhoneError::Kind kind) {
    if (waits.empty()) {
      EXPECT_EQ(Phones::list(cable.browser()).at(0).state, PhoneState::silent);
    }
    waits.push_back(kind);
    simulator.change(0, [](SimulatedPhone& phone) { phone.hangs = false; });
    return true;
  });
  Received received;
  camera.download(asset("100APPLE/long", content.size()), received);
  EXPECT_TRUE(received.text == content);
  EXPECT_THAT(waits, testing::Contains(PhoneError::Kind::silent));
}

TEST_P(CameraSourceTest, questionAfterAStoppedOne_waitsForThePhone) {
  cable.setPatience(std::chrono::minutes{1});
  auto& simulator = plugIn([](SimulatedPhone& phone) { phone.hangs = true; });
  std::stop_source stop;
  std::jthread person{[&] {
    std::this_thread::sleep_for(std::chrono::milliseconds{50});
    stop.request_stop();
    std::this_thread::sleep_for(std::chrono::milliseconds{50});
    simulator.change(0, [](SimulatedPhone& phone) { phone.hangs = false; });
  }};
  EXPECT_THROW(Phones::list(cable.browser(), stop.get_token()), PhoneError);
  EXPECT_EQ(Phones::list(cable.browser()).at(0).state, PhoneState::ready);
}

TEST_P(CameraSourceTest, stopWhileThePhoneHangs_endsEveryCallAtOnce) {
  cable.write("100APPLE/long", bytesOf(2 * mebibyte));
  const std::vector<std::function<void(const std::stop_token&)>> calls{
      [&](const auto& stop) { Phones::list(cable.browser(), stop); },
      [&](const auto& stop) { cable.browser().openFiles(SimulatedPhone{}.deviceID, stop); },
      [&](const auto& stop) {
        plugIn([](SimulatedPhone& phone) { phone.hangsAfterBytes = mebibyte + 5; });
        const auto files = cable.browser().openFiles(SimulatedPhone{}.deviceID, stop);
        const auto file = files->open("/DCIM/100APPLE/long", 2 * mebibyte, false);
        std::string buffer(2 * mebibyte, '\0');
        file->read(0, buffer);
      }};
  for (std::size_t i = 0; i < calls.size(); ++i) {
    // Each call has a browser of its own, so that no question of the previous call is unanswered.
    cable.setPatience(std::chrono::hours{1});
    plugIn([](SimulatedPhone& phone) { phone.hangs = true; });
    std::stop_source stop;
    std::thread person{[&] {
      std::this_thread::sleep_for(std::chrono::milliseconds{100});
      stop.request_stop();
    }};
    try {
      calls[i](stop.get_token());
      ADD_FAILURE() << i;
    } catch (const PhoneError& error) {
      EXPECT_EQ(error.kind(), PhoneError::Kind::stopped) << i;
    }
    person.join();
    cable.unplugAll();
  }
}

struct StateRow {
  Trust trust;
  bool isLocked;
  PhoneState state;
  std::optional<PhoneError::Kind> error;
};

TEST_P(CameraSourceTest, phones_tellTheirStateAndOpenOnlyWhenReady) {
  const std::vector<StateRow> rows{
      {Trust::trusted, false, PhoneState::ready, std::nullopt},
      {Trust::asking, false, PhoneState::ready, std::nullopt},
      {Trust::trusted, true, PhoneState::locked, PhoneError::Kind::locked},
      {Trust::asking, true, PhoneState::locked, PhoneError::Kind::locked},
      {Trust::pending, false, PhoneState::trustPending, PhoneError::Kind::trustPending},
      {Trust::denied, false, PhoneState::trustDenied, PhoneError::Kind::trustDenied},
  };
  for (const StateRow& row : rows) {
    plugIn([&](SimulatedPhone& phone) {
      phone.trust = row.trust;
      phone.isLocked = row.isLocked;
      phone.name = "Аня";
    });
    const auto phones = Phones::list(cable.browser());
    ASSERT_EQ(phones.size(), 1U);
    EXPECT_EQ(phones[0].state, row.state) << textOf(row.state);
    EXPECT_EQ(phones[0].name, "Аня");
    std::optional<PhoneError::Kind> error;
    try {
      cable.browser().openFiles(phones[0].deviceID, {});
    } catch (const PhoneError& caught) {
      error = caught.kind();
    }
    EXPECT_EQ(error, row.error) << textOf(row.state);
  }
}

TEST_P(CameraSourceTest, phoneThatIsUnlockedAndTrusts_isReady) {
  auto& simulator = plugIn([](SimulatedPhone& phone) {
    phone.trust = Trust::pending;
    phone.isLocked = true;
  });
  EXPECT_EQ(Phones::list(cable.browser()).at(0).state, PhoneState::locked);
  simulator.change(0, [](SimulatedPhone& phone) { phone.isLocked = false; });
  EXPECT_EQ(Phones::list(cable.browser()).at(0).state, PhoneState::trustPending);
  simulator.change(0, [](SimulatedPhone& phone) { phone.trust = Trust::asking; });
  const auto phones = Phones::list(cable.browser());
  EXPECT_EQ(phones.at(0).state, PhoneState::ready);
  EXPECT_EQ(phones.at(0).serialNumber, "SIMULATED1");
  EXPECT_EQ(phones.at(0).model, "iPhone14,5");
}

TEST(Phones, list_hasAllOnTheCableAndNoOthers) {
  SimulatedCable cable;
  EXPECT_THROW(Phones::list(cable.browser()), PhoneError);
  SimulatedPhone first;
  SimulatedPhone second;
  second.deviceID = "00008110-0000000000000002";
  second.isLocked = true;
  SimulatedPhone absent;
  absent.deviceID = "00008110-0000000000000003";
  absent.isPluggedIn = false;
  cable.plugInAll({first, second, absent});
  std::vector<std::string> ids;
  for (const PhoneOnCable& phone : Phones::list(cable.browser())) ids.push_back(phone.deviceID);
  EXPECT_THAT(ids, ElementsAre(first.deviceID, second.deviceID));
  try {
    cable.browser().openFiles(absent.deviceID, {});
    ADD_FAILURE();
  } catch (const PhoneError& error) {
    EXPECT_EQ(error.kind(), PhoneError::Kind::gone);
  }
}

TEST(PhoneFiles, namesAndStatus_areThoseOfTheFolder) {
  SimulatedCable cable;
  cable.write("100APPLE/b.JPG", "12345");
  cable.write("100APPLE/a.JPG", "");
  auto& simulator = cable.plugIn();
  const auto files = cable.browser().openFiles(simulator.phone(0).deviceID, {});
  EXPECT_THAT(files->names("/DCIM"), ElementsAre("100APPLE"));
  EXPECT_THAT(files->names("/DCIM/100APPLE"), ElementsAre("a.JPG", "b.JPG"));
  EXPECT_EQ(files->status("/DCIM/100APPLE").type, FileStatus::Type::folder);
  EXPECT_EQ(files->status("/DCIM/100APPLE/b.JPG").size, 5U);
  EXPECT_THROW(files->names("/DCIM/101APPLE"), FileError);
}

TEST(PhoneFiles, smallReads_areOfOneCallWhereTheyLieTogether) {
  SimulatedCable cable;
  const std::string content = bytesOf(300'000);
  cable.write("100APPLE/a.JPG", content);
  auto& simulator = cable.plugIn();
  const auto files = cable.browser().openFiles(simulator.phone(0).deviceID, {});
  const auto before = simulator.fileCalls();
  {
    const auto file = files->open("/DCIM/100APPLE/a.JPG", content.size(), true);
    for (const std::size_t offset : {0U, 12U, 40'000U, 5U}) {
      std::string buffer(1000, '\0');
      EXPECT_EQ(file->read(offset, buffer), 1000U);
      EXPECT_EQ(buffer, content.substr(offset, 1000));
    }
    EXPECT_EQ(simulator.fileCalls() - before, 2U);  // open and read
    std::string end(1000, '\0');
    EXPECT_EQ(file->read(content.size() - 10, end), 10U);
    EXPECT_EQ(end.substr(0, 10), content.substr(content.size() - 10));
  }
  EXPECT_EQ(simulator.fileCalls() - before, 5U);  // and seek, read, close
}

}  // namespace
}  // namespace tavrix
