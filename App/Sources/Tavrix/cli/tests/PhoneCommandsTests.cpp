#include <thread>

#include "cli/tests/CommandTester.h"
#include "device/cable/tests/support/SimulatedCable.h"
#include "device/metadata/tests/support/MediaBytes.h"

namespace tavrix::cli {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using Trust = SimulatedPhone::Trust;

std::string still(const std::string& date) {
  using namespace testbytes;
  return jpeg(exifSegment(capture(date, "+00:00")) + frame(4032, 3024));
}

/// A phone with two shots, one of them large.
struct PhoneCommandsTest : testing::Test {
  PhoneCommandsTest() {
    cable.write("100APPLE/IMG_0001.JPG", still("2026:05:20 12:00:00"));
    cable.write("100APPLE/IMG_0002.JPG", large);
    tester.environment["DEMO_STATE_DIR"] = tester.folder / "state";
    tester.phones = &cable.browser();
  }

  CommandResult run(std::vector<std::string> arguments, const std::string& language = "en") const {
    // The tester would replace "phone" by a folder.
    for (std::string& argument : arguments) {
      if (argument == "cable") argument = "phone:" + SimulatedPhone{}.serialNumber;
    }
    arguments.insert(arguments.end(), {"--lang", language});
    return tester.run(std::move(arguments));
  }
  bool hasBothPictures() const {
    return tester.folder.read("photos/2026-05-20/IMG_0001.JPG") == still("2026:05:20 12:00:00") &&
           tester.folder.read("photos/2026-05-21/IMG_0002.JPG") == large;
  }

  SimulatedCable cable;
  CommandTester tester;
  std::string large = still("2026:05:21 12:00:00") + std::string(3'000'000, 'x');
};

TEST_F(PhoneCommandsTest, transfer_remembersHowLargeTheCatalogueWas) {
  cable.plugIn();
  EXPECT_EQ(run({"transfer", "cable", "photos"}).status, ExitStatus::done);
  const JsonValue kept = parseJson(tester.folder.read("state/defaults.json"));
  EXPECT_EQ(*kept.member("lastCatalogCount"), parseJson("2"));
  EXPECT_EQ(*kept.member("lastCatalogCount-SIMULATED1"), parseJson("2"));
}

TEST_F(PhoneCommandsTest, phones_areListedWithTheirState) {
  SimulatedPhone first;
  first.root = cable.root();
  first.name = "Аня";
  SimulatedPhone second;
  second.deviceID = "00008110-0000000000000002";
  second.trust = Trust::pending;
  cable.plugInAll({first, second});
  EXPECT_EQ(run({"phones"}, "ru").out,
            "Аня (iPhone14,5), 00008110-0000000000000001 — готов\n"
            "iPhone (iPhone14,5), 00008110-0000000000000002 — спрашивает, доверять ли этому "
            "компьютеру: нажмите на нём «Доверять»\n");
  const auto phones = run({"phones", "--json"}).json();
  EXPECT_EQ(*(*phones.asArray())[0].member("serialNumber")->asString(), "SIMULATED1");
  EXPECT_EQ(*(*phones.asArray())[1].member("state")->asString(), "trustPending");
  cable.plugInAll({});
  EXPECT_EQ(run({"phones"}).out, "No iPhone is connected.\n");
}

TEST_F(PhoneCommandsTest, catalogue_isThatOfTheFilesAndReadOnce) {
  auto& simulator = cable.plugIn();
  const auto first = run({"catalog", "cable", "--json"});
  EXPECT_EQ(first.status, ExitStatus::done);
  const JsonValue catalogue = first.json();
  ASSERT_EQ(catalogue.asArray()->size(), 2U);
  EXPECT_EQ(*(*catalogue.asArray())[0].member("id")->asString(), "100APPLE/IMG_0001.JPG");
  EXPECT_EQ(*(*catalogue.asArray())[1].member("captureDate")->asString(), "2026-05-21T12:00:00Z");
  const auto before = simulator.fileCalls();
  EXPECT_EQ(run({"catalog", "cable", "--json"}).out, first.out);
  EXPECT_LE(simulator.fileCalls() - before, 10U);
}

TEST_F(PhoneCommandsTest, phoneThatCannotBeRead_isOneSentenceWithTheRemedy) {
  struct Row {
    std::function<void(SimulatedPhone&)> change;
    std::string russian;
  };
  const std::vector<Row> rows{
      {[](SimulatedPhone& phone) { phone.isPluggedIn = false; },
       "tavrix: iPhone SIMULATED1 не подключён. Подключите его кабелем и разблокируйте, затем "
       "повторите команду.\n"},
      {[](SimulatedPhone& phone) { phone.isLocked = true; },
       "tavrix: iPhone «iPhone» заблокирован. Разблокируйте его, затем повторите команду.\n"},
      {[](SimulatedPhone& phone) { phone.serialNumber = "ANOTHER"; },
       "tavrix: Подключён другой iPhone — «iPhone», а нужен SIMULATED1. Подключите его кабелем и "
       "разблокируйте, затем повторите команду.\n"},
      {[](SimulatedPhone& phone) { phone.unreadable = {"/DCIM"}; },
       "tavrix: iPhone «iPhone» не показывает свои снимки. Разблокируйте его и подключите кабель "
       "снова, затем повторите команду.\n"},
  };
  for (const Row& row : rows) {
    cable.plugIn(row.change);
    const auto result = run({"catalog", "cable"}, "ru");
    EXPECT_EQ(result.status, ExitStatus::stopped);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, row.russian);
  }
  for (const auto& [trust, part] :
       {std::pair{Trust::pending, "asks whether to trust this computer. Tap Trust"},
        std::pair{Trust::denied, "does not trust this computer. Unplug the cable"}}) {
    cable.plugIn([&](SimulatedPhone& phone) { phone.trust = trust; });
    const auto id = "phone:" + SimulatedPhone{}.deviceID;
    const auto result = run({"groups", id});
    EXPECT_EQ(result.status, ExitStatus::stopped);
    EXPECT_THAT(result.err, HasSubstr(part));
  }
  cable.unplugAll();
  EXPECT_THAT(run({"catalog", "cable"}).err, HasSubstr("usbmuxd"));
}

TEST_F(PhoneCommandsTest, whatThePhoneRefuses_isToldWithTheRemedyOfACable) {
  cable.write("101APPLE/IMG_0003.JPG", large);
  cable.plugIn([](SimulatedPhone& phone) { phone.unreadable = {"/101APPLE", "IMG_0001.JPG"}; });
  const auto result = run({"transfer", "cable", "photos"});
  EXPECT_EQ(result.status, ExitStatus::someFailed);
  EXPECT_EQ(result.err,
            "tavrix: The iPhone does not show folders (1): 101APPLE; plug it in again and try "
            "again.\n"
            "tavrix: The iPhone does not provide files (1): 100APPLE/IMG_0001.JPG; the catalogue "
            "has no capture date and place for them. Plug it in again and try again.\n");
}

TEST_F(PhoneCommandsTest, transfer_bringsEveryByteAndTheSecondNothingNew) {
  cable.plugIn();
  const auto result = run({"transfer", "cable", "photos"});
  EXPECT_EQ(result.status, ExitStatus::done) << result.err;
  EXPECT_TRUE(hasBothPictures());
  const auto again = run({"transfer", "cable", "photos", "--json"});
  EXPECT_EQ(again.status, ExitStatus::done);
  EXPECT_EQ(again.json().member("report")->member("files")->asArray()->size(), 0U);
}

TEST_F(PhoneCommandsTest, phonePulledInMidFile_isWaitedForAndNothingIsLost) {
  // While reading, and while copying.
  for (const std::uint64_t place : {30'000U, 1'500'000U, 2'900'000U}) {
    cable.plugIn([&](SimulatedPhone& phone) {
      phone.vanishesAfterBytes = place;
      phone.returnsAfter = std::chrono::milliseconds{150};
    });
    tester.environment["DEMO_STATE_DIR"] = tester.folder / ("state" + std::to_string(place));
    const auto result = run({"transfer", "cable", "photos"}, "ru");
    EXPECT_EQ(result.status, ExitStatus::done) << result.err;
    EXPECT_TRUE(hasBothPictures()) << place;
    EXPECT_THAT(result.err, HasSubstr("iPhone отключён. Подключите кабель — продолжу сам.\n"));
    EXPECT_THAT(result.err, HasSubstr("iPhone снова на связи — продолжаю.\n"));
    const auto record = run({"history", tester.recordID().text(), "--json"});
    const bool wasCopying = place > 1'000'000;
    EXPECT_EQ(record.out.find("связь с iPhone пропадала 1 раз;") != std::string::npos, wasCopying)
        << record.out;
    std::filesystem::remove_all(tester.folder / "photos");
  }
}

TEST_F(PhoneCommandsTest, transfer_waitsForThePhoneToBeUnlockedAndToTrust) {
  auto& simulator = cable.plugIn([](SimulatedPhone& phone) {
    phone.trust = Trust::pending;
    phone.isLocked = true;
  });
  const auto awaitRefusals = [&](std::uint64_t count) {
    while (simulator.refusals() < count) std::this_thread::sleep_for(std::chrono::milliseconds{1});
  };
  std::thread person{[&] {
    awaitRefusals(1);
    simulator.change(0, [](SimulatedPhone& phone) { phone.isLocked = false; });
    awaitRefusals(2);
    simulator.change(0, [](SimulatedPhone& phone) { phone.trust = Trust::asking; });
  }};
  const auto result = run({"transfer", "phone:" + SimulatedPhone{}.deviceID, "photos"});
  person.join();
  EXPECT_EQ(result.status, ExitStatus::done) << result.err;
  EXPECT_TRUE(hasBothPictures());
  EXPECT_EQ(result.err,
            "tavrix: The iPhone “iPhone” is locked. Unlock it — I will carry on by myself.\n"
            "tavrix: The iPhone “iPhone” asks whether to trust this computer. Tap Trust on it and "
            "enter the passcode — I will carry on by myself.\n");
}

TEST_F(PhoneCommandsTest, phoneThatHangs_isOneSentenceOrIsWaitedFor) {
  cable.setPatience(std::chrono::seconds{3});
  tester.phones = &cable.browser();
  const std::string silent =
      "tavrix: iPhone «iPhone» подключён, но не отвечает. Отключите кабель и подключите его "
      "снова; если это не поможет, перезагрузите iPhone";
  cable.plugIn([](SimulatedPhone& phone) { phone.hangsAfterBytes = 10; });
  const auto catalogue = run({"catalog", "cable"}, "ru");
  EXPECT_EQ(catalogue.status, ExitStatus::stopped);
  EXPECT_EQ(catalogue.err, silent + ", затем повторите команду.\n");
  const auto phones = run({"phones"});
  EXPECT_THAT(phones.out, HasSubstr("connected but does not respond")) << phones.err;

  auto& simulator = cable.plugIn([](SimulatedPhone& phone) { phone.hangsAfterBytes = 1'500'000; });
  std::jthread person{[&](const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      std::this_thread::sleep_for(std::chrono::seconds{7});
      simulator.change(0, [](SimulatedPhone& phone) { phone.hangs = false; });
    }
  }};
  const auto transfer = run({"transfer", "cable", "photos"}, "ru");
  EXPECT_EQ(transfer.status, ExitStatus::done) << transfer.err;
  EXPECT_TRUE(hasBothPictures());
  EXPECT_THAT(transfer.err, EndsWith(silent + " — продолжу сам.\n"
                                              "tavrix: iPhone снова на связи — продолжаю.\n"));
}

TEST_F(PhoneCommandsTest, interruptWhileWaiting_endsTheCommand) {
  cable.plugInAll({});
  tester.isInterrupted = true;
  const auto result = run({"transfer", "cable", "photos"});
  EXPECT_EQ(result.status, ExitStatus::cancelled);
  EXPECT_FALSE(tester.folder.has("photos"));
}

}  // namespace
}  // namespace tavrix::cli
