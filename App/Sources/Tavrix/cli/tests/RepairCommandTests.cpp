#include <fstream>
#include <thread>

#include "cli/tests/CommandTester.h"
#include "device/cable/tests/support/SimulatedCable.h"
#include "foundation/files/Folder.h"
#include "runs/Destination.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// Seven copied files of ten bytes each, all different.
struct RepairCommand : testing::Test {
  RepairCommand() {
    tester.addPhone(smallSnapshot, smallMedia);
    for (std::size_t i = 0; i < smallMedia.size(); ++i) {
      tester.folder.write("phone/media/" + smallMedia[i], "content " + std::to_string(10 + i));
    }
  }
  CommandResult transfer(std::vector<std::string> more = {}) const {
    more.insert(more.begin(), {"transfer", "phone", "photos"});
    return tester.run(more);
  }
  CommandResult repair(std::vector<std::string> more = {}) const {
    more.insert(more.begin(), {"repair", "phone", "photos"});
    return tester.run(more);
  }
  std::string inPhotos(const std::string& name) const { return tester.folder / ("photos/" + name); }
  void damage(const std::string& name) const {
    tester.folder.write("photos/" + name, "damaged!!!");
  }
  void lose(const std::string& name) const { std::filesystem::remove(inPhotos(name)); }

  CommandTester tester;
  std::string markerName = DestinationMarker::fileName(snapshotPhone("iPhone").hash);
};

TEST_F(RepairCommand, lostFiles_areRepairedAndVerifySaysSo) {
  transfer();
  EXPECT_EQ(repair().out, "Восстанавливать нечего: ни один файл не изменился и не пропал.\n");
  damage("2026-05-20/IMG_0001.HEIC");
  lose("2026-05-21/IMG_0003.MOV");
  EXPECT_THAT(
      tester.run({"verify", "photos"}).out,
      EndsWith("\nВернуть изменившееся и пропавшее (SOURCE — откуда переносили): tavrix repair "
               "SOURCE " +
               (tester.folder / "photos") + "\n"));
  const CommandResult result = repair();
  EXPECT_EQ(result.status, ExitStatus::done) << result.err;
  EXPECT_EQ(result.out,
            "Восстановлено всё: 2 файла, записано 20\u00A0Б.\n"
            "\n"
            "Восстановлены:\n"
            "  2026-05-20/IMG_0001.HEIC — повреждённый файл теперь «IMG_0001 (damaged).HEIC»\n"
            "  2026-05-21/IMG_0003.MOV\n");
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_EQ(tester.folder.read("photos/2026-05-20/IMG_0001 (damaged).HEIC"), "damaged!!!");
  EXPECT_EQ(tester.run({"verify", "photos"}).status, ExitStatus::done);
}

TEST_F(RepairCommand, whatCannotBeRepaired_isKeptWithItsReason) {
  transfer();
  tester.run({"transfer", "phone", "photos", "--device-name", "Anna", "--set", "onlyNew=false",
              "--set", "uiMode=flat"});
  damage("2026-05-20/IMG_0001.HEIC");
  lose("2026-05-20/IMG_0001.MOV");
  lose("2026-05-20/IMG_0001.AAE");
  damage("IMG_0004.PNG");
  const std::string annas = tester.folder.read("photos/IMG_0004.PNG");
  tester.folder.write("phone/media/IMG_0001.MOV", "edited now");
  std::filesystem::remove(tester.folder / "phone/media/IMG_0001.AAE");
  const CommandResult result = repair({"--json", "--lang", "en"});
  EXPECT_EQ(result.status, ExitStatus::someFailed);
  EXPECT_EQ(result.json(), parseJson(R"({
      "repaired":[{"path":"2026-05-20/IMG_0001.HEIC","assetID":"100APPLE/IMG_0001.HEIC",
        "bytesOnDisk":10,"damagedPath":"2026-05-20/IMG_0001 (damaged).HEIC"}],
      "failed":[],
      "kept":[{"path":"2026-05-20/IMG_0001.AAE","assetID":"100APPLE/IMG_0001.AAE",
        "reason":"файла нет в источнике","reasonCode":{"code":"notInSource"}},
      {"path":"2026-05-20/IMG_0001.MOV","assetID":"100APPLE/IMG_0001.MOV",
        "reason":"в источнике под этим именем другой файл: возможно, его изменили",
        "reasonCode":{"code":"otherContent"}},
      {"path":"IMG_0004.PNG","assetID":"IMG_0004.PNG",
        "reason":"записан за другим телефоном, «Anna»: восстановите с ним",
        "reasonCode":{"code":"otherPhone"}}]})"))
      << result.out;
  EXPECT_EQ(tester.folder.read("photos/IMG_0004.PNG"), annas);
  const CommandResult text = repair({"--lang", "en"});
  EXPECT_EQ(text.out,
            "Repaired 0 of 3 files; 0\u00A0B written.\n"
            "\n"
            "Left as they are:\n"
            "  2026-05-20/IMG_0001.AAE — the file is not in the source\n"
            "  2026-05-20/IMG_0001.MOV — the source has a different file under this name, perhaps "
            "it was edited\n"
            "  IMG_0004.PNG — recorded for another phone, “Anna”: repair it with that phone\n");
}

TEST_F(RepairCommand, callThatCannotBegin_isOneSentenceWithTheRemedy) {
  struct Row {
    std::vector<std::string> more;
    std::string sentence;
  };
  EXPECT_THAT(repair({"--lang", "en"}).err, HasSubstr("There is no folder"));
  transfer();
  const std::string marker = tester.folder.read("photos/" + markerName);
  const CommandResult other = repair({"--lang", "en", "--device-name", "Anna"});
  EXPECT_EQ(other.status, ExitStatus::stopped);
  EXPECT_THAT(other.err, HasSubstr("no record of the phone “Anna”, only of others: iPhone. Name"));
  tester.folder.write("photos/" + markerName, marker.substr(9));
  EXPECT_THAT(repair({"--lang", "en"}).err, HasSubstr("tavrix marker rebuild SOURCE DEST"));
  const auto otherRun = openFolder(inPhotos(""));
  ASSERT_TRUE(otherRun->lock());
  EXPECT_EQ(repair().status, ExitStatus::stopped);
}

TEST_F(RepairCommand, interrupt_reportsEverythingAndChangesNothing) {
  transfer();
  damage("2026-05-20/IMG_0001.HEIC");
  tester.isInterrupted = true;
  const CommandResult result = repair({"--json"});
  EXPECT_EQ(result.status, ExitStatus::cancelled);
  EXPECT_THAT(result.err, HasSubstr("Восстановление прервано"));
  EXPECT_THAT(*result.json().member("repaired")->asArray(), IsEmpty());
  EXPECT_EQ(tester.folder.read("photos/2026-05-20/IMG_0001.HEIC"), "damaged!!!");
}

TEST_F(RepairCommand, phoneThatIsUnplugged_isWaitedFor) {
  SimulatedCable cable;
  const std::string large(3'000'000, 'x');
  cable.write("100APPLE/IMG_0001.JPG", large);
  tester.phones = &cable.browser();
  const std::string serial = "phone:" + SimulatedPhone{}.serialNumber;
  cable.plugIn();
  ASSERT_EQ(tester.run({"transfer", serial, "photos"}).status, ExitStatus::done);
  std::string path;
  openFolder(inPhotos(""))->visitAll([&](const std::string& found, const FileStatus&) {
    if (found.ends_with(".JPG")) path = found;
  });
  lose(path);
  // First it is absent, then it leaves in the middle of the file.
  auto& simulator = cable.plugIn([](SimulatedPhone& phone) {
    phone.isLocked = true;
    phone.vanishesAfterBytes = 1'500'000;
    phone.returnsAfter = std::chrono::milliseconds{150};
  });
  std::thread person{[&] {
    while (simulator.refusals() < 1) std::this_thread::sleep_for(std::chrono::milliseconds{1});
    simulator.change(0, [](SimulatedPhone& phone) { phone.isLocked = false; });
  }};
  const CommandResult result = tester.run({"repair", serial, "photos", "--lang", "en"});
  person.join();
  EXPECT_EQ(result.status, ExitStatus::done) << result.err;
  EXPECT_EQ(tester.folder.read("photos/" + path), large);
  EXPECT_EQ(result.err,
            "tavrix: The iPhone “iPhone” is locked. Unlock it — I will carry on by myself.\n"
            "tavrix: The iPhone is back — carrying on.\n"
            "tavrix: The iPhone is disconnected. Plug the cable in — I will carry on by myself.\n"
            "tavrix: The iPhone is back — carrying on.\n");
}

TEST_F(RepairCommand, transferAndPlan_tellOfADamagedRecord) {
  transfer();
  tester.folder.write("photos/" + markerName, "{\"files\": [");
  for (const std::string command : {"plan", "transfer"}) {
    EXPECT_THAT(tester.run({command, "phone", "photos", "--lang", "en"}).err,
                AllOf(StartsWith("tavrix: The record “" + markerName + "” is damaged"),
                      HasSubstr("tavrix marker rebuild SOURCE DEST")));
  }
}

TEST_F(RepairCommand, cancelledPacking_speaksOnlyOfArchivesThatExist) {
  tester.isInterrupted = true;
  const CommandResult result = transfer({"--set", "packAsZip=true"});
  EXPECT_EQ(result.status, ExitStatus::cancelled);
  EXPECT_THAT(result.err, HasSubstr("ни один архив не готов"));
}

TEST_F(RepairCommand, verifyBesideATransfer_countsWhatItWritesAsNoLoss) {
  transfer();
  const auto other = openFolder(inPhotos(""));
  ASSERT_TRUE(other->lock());
  // The claims of a transfer, one of them under way.
  std::string marker = tester.folder.read("photos/" + markerName);
  const std::string begin = "\"files\": [";
  marker.insert(marker.find(begin) + begin.size(),
                R"({"path": "2026-06-01/NEW.HEIC", "size": 0, "localID": "NEW.HEIC"},)");
  tester.folder.write("photos/" + markerName, marker);
  tester.folder.write("photos/2026-06-01/NEW.HEIC.part", "ha");
  const CommandResult result = tester.run({"verify", "photos", "--lang", "en"});
  EXPECT_EQ(result.status, ExitStatus::done);
  EXPECT_EQ(result.out,
            "The check is complete and found no losses; files that the running transfer is writing "
            "were not checked; 70\u00A0B read.\n"
            "\n"
            "In the records                               8\n"
            "  intact                                     7\n"
            "  being written by the running transfer      1\n"
            "Files of the running transfer, not recorded  1\n");
  const JsonValue json = tester.run({"verify", "photos", "--json"}).json();
  EXPECT_EQ(*json.member("isTransferRunning"), parseJson("true"));
  EXPECT_EQ(*json.member("ofRunningTransfer"), parseJson(R"(["2026-06-01/NEW.HEIC.part"])"));
}

/// Returns the JSON example of a section of docs/json.md.
JsonValue documentedExample(const std::string& section) {
  std::ifstream file{std::string{TAVRIX_DOCS} + "/json.md"};
  const std::string text{std::istreambuf_iterator<char>{file}, {}};
  const std::string fence = "```json\n";
  const std::size_t begin = text.find(fence, text.find("\n## " + section + "\n")) + fence.size();
  return parseJson(text.substr(begin, text.find("```", begin) - begin));
}

TEST_F(RepairCommand, documentation_showsWhatIsPrinted) {
  transfer();
  damage("2026-05-20/IMG_0001.HEIC");
  lose("2026-05-20/IMG_0001.MOV");
  lose("2026-05-20/IMG_0001.AAE");
  tester.folder.write("phone/media/IMG_0001.MOV", "edited now");
  std::filesystem::remove(tester.folder / "phone/media/IMG_0001.AAE");
  EXPECT_EQ(repair({"--json"}).json(), documentedExample("repair"));
}

}  // namespace
}  // namespace tavrix::cli
