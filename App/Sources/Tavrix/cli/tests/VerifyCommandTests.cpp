#include <map>

#include "cli/tests/CommandTester.h"
#include "foundation/Digest.h"
#include "foundation/files/Folder.h"
#include "runs/Destination.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::StartsWith;

/// Seven copied files of ten bytes each, all different.
struct VerifyCommand : testing::Test {
  VerifyCommand() {
    tester.addPhone(smallSnapshot, smallMedia);
    for (std::size_t i = 0; i < smallMedia.size(); ++i) {
      tester.folder.write("phone/media/" + smallMedia[i], "content " + std::to_string(10 + i));
    }
  }
  void transfer(std::vector<std::string> more = {}) const {
    more.insert(more.begin(), {"transfer", "phone", "photos"});
    ASSERT_EQ(tester.run(more).status, ExitStatus::done);
  }
  CommandResult verify(std::vector<std::string> more = {}) const {
    more.insert(more.begin(), {"verify", "photos", "--lang", "en"});
    return tester.run(more);
  }
  CommandResult rebuild(std::vector<std::string> more = {}) const {
    more.insert(more.begin(), {"marker", "rebuild", "phone", "photos", "--lang", "en"});
    return tester.run(more);
  }
  std::size_t plannedFiles(std::vector<std::string> more = {}) const {
    more.insert(more.begin(), {"plan", "phone", "photos", "--json"});
    return tester.run(more).json().member("files")->asArray()->size();
  }
  std::string inPhotos(const std::string& name) const { return tester.folder / ("photos/" + name); }
  static std::map<std::string, std::string> statesOf(const CommandResult& result) {
    std::map<std::string, std::string> states;
    const JsonValue json = result.json();
    for (const JsonValue& file : *json.member("files")->asArray()) {
      states[*file.member("path")->asString()] = *file.member("state")->asString();
    }
    return states;
  }
  bool sha256sumAccepts() const {
    return std::system(("cd '" + tester.folder / "photos" +
                        "' && sha256sum --strict --quiet -c SHA256SUMS >checked.log 2>&1")
                           .c_str()) == 0;
  }

  CommandTester tester;
  std::string markerName = DestinationMarker::fileName(snapshotPhone("iPhone").hash);
};

TEST_F(VerifyCommand, freshCopies_areAllIntact) {
  transfer();
  const CommandResult russian = tester.run({"verify", "photos"});
  EXPECT_EQ(russian.status, ExitStatus::done) << russian.err;
  EXPECT_EQ(russian.out,
            "Проверка завершена, всё цело; прочитано 70\u00A0Б.\n"
            "\n"
            "В записях  7\n"
            "  целы     7\n");
  EXPECT_THAT(russian.err, IsEmpty());
  EXPECT_EQ(verify({"--json"}).out, tester.run({"verify", "photos", "--json"}).out);
}

TEST_F(VerifyCommand, losses_areListedWithTheirReason) {
  transfer();
  tester.folder.write("photos/2026-05-20/IMG_0001.HEIC", "Content 10");
  tester.folder.write("photos/2026-05-20/IMG_0001.MOV", "short");
  std::filesystem::remove(inPhotos("2026-05-21/IMG_0003.MOV"));
  tester.folder.write("photos/2026-05-21/mine.jpg", "mine");
  const std::string marker = tester.folder.read("photos/" + markerName);
  const CommandResult result = verify();
  EXPECT_EQ(result.status, ExitStatus::someFailed);
  EXPECT_EQ(
      result.out,
      "The check is complete: 3 files are not intact; 50\u00A0B read.\n"
      "\n"
      "In the records  7\n"
      "  intact        4\n"
      "  changed       2\n"
      "  missing       1\n"
      "In no record    1\n"
      "\n"
      "Changed:\n"
      "  2026-05-20/IMG_0001.HEIC — same size, different content\n"
      "  2026-05-20/IMG_0001.MOV — expected 10 bytes, got 5\n"
      "\n"
      "Missing:\n"
      "  2026-05-21/IMG_0003.MOV\n"
      "\n"
      "In no record:\n"
      "  2026-05-21/mine.jpg\n"
      "\n"
      "To bring back what changed or is missing (SOURCE is where it came from): tavrix repair "
      "SOURCE " +
          (tester.folder / "photos") + "\n");
  EXPECT_EQ(tester.folder.read("photos/" + markerName), marker);
  const CommandResult json = verify({"--json"});
  EXPECT_EQ(json.status, ExitStatus::someFailed);
  EXPECT_EQ(
      json.json().member("files")->asArray()->at(1),
      parseJson(R"({"path":"2026-05-20/IMG_0001.HEIC","state":"changed","expectedSize":10,
                "size":10,"expectedSha256":")" +
                sha256Hex("content 10") + R"(","sha256":")" + sha256Hex("Content 10") + R"("})"));
  EXPECT_EQ(*json.json().member("counts"), parseJson(R"({"recorded":7,"intact":4,"changed":2,
      "missing":1,"unreadable":0,"withoutChecksum":0,"neverConfirmed":0,"notReached":0,
      "beingWritten":0,"unknown":1,"leftOvers":0,"ofRunningTransfer":0,"damagedRecords":0,"unreadableFolders":0})"));
}

TEST_F(VerifyCommand, longListOfStrangers_isShortened) {
  transfer();
  for (int i = 0; i < 41; ++i) tester.folder.write(fmt::format("photos/own/{:03}", i), "x");
  EXPECT_THAT(verify().out, AllOf(HasSubstr("  own/019\n  … and 21 files more; --json lists all\n"),
                                  Not(HasSubstr("own/020"))));
  EXPECT_EQ(verify({"--json"}).json().member("unknown")->asArray()->size(), 41U);
}

TEST_F(VerifyCommand, whatCannotBeCompared_isOneSentenceWithTheRemedy) {
  transfer();
  const std::string marker = tester.folder.read("photos/" + markerName);
  std::string newer = marker;
  newer.replace(newer.find("\"schemaVersion\": 1"), 18, "\"schemaVersion\": 2");
  struct Row {
    std::string destination;
    std::string markerContent;
    std::string sentence;
  };
  const std::vector<Row> rows{{"photos", newer, "newer version of the program (format 2)"},
                              {"photos", marker.substr(9), "is damaged or unreadable"},
                              {"photos", "", "with tavrix marker rebuild SOURCE DEST"},
                              {"photosNone", marker, "There is no folder"},
                              {"phone/snapshot.json", marker, "is not a folder"}};
  for (const Row& row : rows) {
    tester.folder.write("photos/" + markerName, row.markerContent);
    if (row.markerContent.empty()) std::filesystem::remove(inPhotos(markerName));
    const std::string path =
        row.destination.starts_with("photos") ? row.destination : tester.folder / row.destination;
    const CommandResult result = tester.run({"verify", path, "--lang", "en"});
    EXPECT_EQ(result.status, ExitStatus::stopped) << row.sentence;
    EXPECT_THAT(result.err, AllOf(StartsWith("tavrix: "), HasSubstr(row.sentence)));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
    EXPECT_THAT(result.out, IsEmpty());
  }
}

TEST_F(VerifyCommand, interrupt_tellsHowFarItGot) {
  transfer();
  tester.isInterrupted = true;
  const CommandResult result = tester.run({"verify", "photos", "--write-checksums"});
  EXPECT_EQ(result.status, ExitStatus::cancelled);
  EXPECT_THAT(result.err, HasSubstr("Проверка прервана, проверено 0 из 7 файлов"));
  EXPECT_THAT(result.out, HasSubstr("не дошла очередь  7\n"));
  EXPECT_FALSE(tester.folder.has("photos/SHA256SUMS"));
  EXPECT_EQ(*verify({"--json"}).json().member("status")->asString(), "cancelled");
}

TEST_F(VerifyCommand, otherRunAtWork_isToldAndHindersOnlyWriting) {
  transfer();
  const auto otherRun = openFolder(inPhotos(""));
  ASSERT_TRUE(otherRun->lock());
  const CommandResult reading = verify();
  EXPECT_EQ(reading.status, ExitStatus::done);
  EXPECT_THAT(reading.err, HasSubstr("A transfer into the folder"));
  EXPECT_EQ(verify({"--write-checksums"}).status, ExitStatus::stopped);
  EXPECT_EQ(rebuild().status, ExitStatus::stopped);
}

TEST_F(VerifyCommand, checksums_areAcceptedBySha256sum) {
  tester.folder.write("photos/2026-05-21/IMG_0002.JPG", "content 14");  // there before the transfer
  transfer({"--set", "onlyNew=false", "--set", "fileNamePrefixMode=custom", "--set",
            "customFileNamePrefix=a\\b "});
  transfer({"--set", "onlyNew=false"});
  tester.folder.write("photos/2026-05-20/IMG_0001.MOV", "CONTENT 11");
  const CommandResult result = verify({"--write-checksums"});
  EXPECT_EQ(result.status, ExitStatus::someFailed) << result.out << result.err;
  EXPECT_THAT(result.out, AllOf(HasSubstr("/photos/SHA256SUMS”: 14 files.\n"),
                                HasSubstr("1 file had no checksum in the records: it was")));
  const std::string sums = tester.folder.read("photos/SHA256SUMS");
  EXPECT_EQ(std::count(sums.begin(), sums.end(), '\n'), 14);
  EXPECT_THAT(sums, AllOf(HasSubstr("  2026-05-21/IMG_0002.JPG\n"),
                          HasSubstr(sha256Hex("content 11") + "  2026-05-20/IMG_0001.MOV\n")));
  EXPECT_EQ(verify({"--write-checksums"}).status, ExitStatus::someFailed);
  EXPECT_EQ(tester.folder.read("photos/SHA256SUMS"), sums);
  // The list does not confirm a file that verify reports as changed.
  EXPECT_FALSE(sha256sumAccepts());
  tester.folder.write("photos/2026-05-20/IMG_0001.MOV", "content 11");
  EXPECT_TRUE(sha256sumAccepts()) << tester.folder.read("photos/checked.log");
}

TEST_F(VerifyCommand, earlierChecksums_areNeverTakenForTheBytesOfNow) {
  tester.folder.write("photos/2026-05-21/IMG_0002.JPG", "content 14");  // there before the transfer
  transfer({"--set", "onlyNew=false"});
  const std::string own = sha256Hex("mine") + "  mine/notes.txt\n";
  tester.folder.write("photos/SHA256SUMS", own);
  EXPECT_EQ(verify({"--write-checksums"}).status, ExitStatus::done);
  const std::string sums = tester.folder.read("photos/SHA256SUMS");
  EXPECT_THAT(sums, AllOf(HasSubstr(own), HasSubstr(sha256Hex("content 14"))));
  tester.folder.write("photos/2026-05-21/IMG_0002.JPG", "CONTENT 14");
  std::filesystem::remove(inPhotos("2026-05-21/IMG_0003.MOV"));
  const CommandResult result = verify({"--write-checksums"});
  EXPECT_EQ(result.status, ExitStatus::someFailed);
  EXPECT_THAT(result.out, AllOf(HasSubstr("IMG_0002.JPG — the content does not match SHA256SUMS\n"),
                                Not(HasSubstr("compared with nothing"))));
  EXPECT_EQ(tester.folder.read("photos/SHA256SUMS"), sums);
}

TEST_F(VerifyCommand, damagedRecordOfOnePhone_isNoLossAmongTheOthersAndHasARemedy) {
  transfer();
  tester.folder.write("photos/phone-0123abcd.json", "{ broken");
  const CommandResult result = verify();
  EXPECT_EQ(result.status, ExitStatus::someFailed);
  EXPECT_THAT(result.out,
              AllOf(StartsWith("Not everything could be checked, unreadable: 1 record; "
                               "there are no losses among what was checked, 70\u00A0B read.\n"),
                    HasSubstr("\nUnreadable records  1\n"),
                    HasSubstr("unreadable records:\n  phone-0123abcd.json\n")));
  EXPECT_THAT(result.err, HasSubstr("rename the record to “phone-0123abcd.json.damaged”"));
  EXPECT_THAT(tester.run({"verify", "photos"}).out,
              StartsWith("Проверено не всё, не читаются: 1 запись; среди проверенного потерь нет"));
  EXPECT_THAT(tester.run({"verify", "--help"}).out, HasSubstr("не читается запись"));
  std::filesystem::rename(inPhotos("phone-0123abcd.json"), inPhotos("phone-0123abcd.json.damaged"));
  EXPECT_EQ(verify().status, ExitStatus::done);
}

TEST_F(VerifyCommand, pathOverALink_hasOneReasonInBothForms) {
  transfer();
  std::filesystem::rename(inPhotos("2026-05-21"), inPhotos("moved"));
  std::filesystem::create_directory_symlink("moved", inPhotos("2026-05-21"));
  const std::string reason = "путь ведёт через ссылку или за пределы папки";
  EXPECT_THAT(tester.run({"verify", "photos"}).out, HasSubstr("IMG_0003.MOV — " + reason + "\n"));
  EXPECT_THAT(verify({"--json"}).out, HasSubstr("\"reason\": \"" + reason + "\""));
}

/// Runs as an ordinary user who has no access to a closed folder.
struct ClosedFolder : VerifyCommand {
  CommandResult asUser(const std::vector<std::string>& arguments) const {
    return tester.runKeptOutOf("photos/2026-05-20", arguments);
  }
};

TEST_F(ClosedFolder, transferMeanwhile_losesNothingAndSaysWhichItIs) {
  transfer();
  const auto folder = openFolder(inPhotos(""));
  const auto before = DestinationMarker::load(*folder).records.front();
  std::filesystem::remove(inPhotos("2026-05-21/IMG_0003.MOV"));
  const CommandResult result = asUser({"transfer", "phone", "photos", "--lang", "en"});
  EXPECT_EQ(result.status, ExitStatus::someFailed);
  EXPECT_THAT(result.err, HasSubstr("/photos/2026-05-20” cannot be read (permission denied)"));
  EXPECT_THAT(result.out, AllOf(HasSubstr("copied                                    1\n"),
                                HasSubstr("failed                                    4\n"),
                                HasSubstr("IMG_0001.HEIC")));
  const auto after = DestinationMarker::load(*folder).records;
  ASSERT_EQ(after.size(), 1U);
  EXPECT_THAT(after.front().files, testing::UnorderedElementsAreArray(before.files));
  EXPECT_EQ(plannedFiles(), 0U);
  EXPECT_EQ(verify().status, ExitStatus::done);
}

TEST_F(ClosedFolder, checks_nameItAndFail) {
  transfer();
  const CommandResult text = asUser({"verify", "photos", "--lang", "en"});
  EXPECT_EQ(text.status, ExitStatus::someFailed);
  EXPECT_THAT(text.out,
              AllOf(HasSubstr("4 files are not intact"),
                    HasSubstr("content is unknown:\n  2026-05-20 — permission denied\n")));
  std::filesystem::remove(inPhotos(markerName));
  const std::vector<std::string> rebuild{"marker", "rebuild", "phone", "photos", "--lang", "en"};
  const CommandResult rebuilt = asUser(rebuild);
  EXPECT_EQ(rebuilt.status, ExitStatus::someFailed);
  EXPECT_THAT(rebuilt.out, HasSubstr("  2026-05-20 — permission denied\n"));
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"marker", "rebuild", "phone", "photos", "--json"},
        std::vector<std::string>{"verify", "photos", "--json"}}) {
    const CommandResult json = asUser(arguments);
    EXPECT_EQ(json.status, ExitStatus::someFailed);
    EXPECT_EQ(
        *json.json().member("unreadableFolders"),
        parseJson(
            R"([{"path":"2026-05-20","reason":"нет прав доступа","reasonCode":{"code":"unreadable","systemError":13}}])"));
  }
}

TEST_F(VerifyCommand, claimThatNeverCame_failsTheCheckUntilTheNextTransfer) {
  transfer();
  const PhoneIdentity phone = snapshotPhone("iPhone");
  const auto folder = openFolder(inPhotos(""));
  auto record = *DestinationMarker::load(*folder).record(phone.hash);
  record.files.push_back({"2026-05-20/IMG_9999.HEIC", 0, std::nullopt, "IMG_9999.HEIC", {}});
  DestinationMarker::save(*folder, record);
  const CommandResult result = tester.run({"verify", "photos"});
  EXPECT_EQ(result.status, ExitStatus::someFailed);
  EXPECT_THAT(result.out, AllOf(HasSubstr("не в порядке 1 файл"),
                                HasSubstr("их нет; возможно, их и не копировали  1\n"),
                                HasSubstr("повторите перенос:\n  2026-05-20/IMG_9999.HEIC\n")));
  transfer();
  EXPECT_EQ(verify().status, ExitStatus::done);
}

TEST_F(VerifyCommand, foreignChecksumFile_staysAsItIs) {
  transfer();
  tester.folder.write("photos/SHA256SUMS", "my own notes\n");
  const CommandResult result = verify({"--write-checksums"});
  EXPECT_EQ(result.status, ExitStatus::stopped);
  EXPECT_THAT(result.err, HasSubstr("is not a list of checksums and stays as it is; rename it"));
  EXPECT_THAT(result.out, IsEmpty());
  EXPECT_EQ(tester.folder.read("photos/SHA256SUMS"), "my own notes\n");
  EXPECT_EQ(verify().status, ExitStatus::done);
}

TEST_F(VerifyCommand, lostMarker_isRebuiltSoThatNothingIsCopiedAgain) {
  // After two runs with prefixes, only the marker distinguishes these files from new ones.
  const std::vector<std::string> prefixed{"--set", "fileNamePrefixMode=phone"};
  transfer(prefixed);
  tester.folder.write("photos/2026-05-20/iPhone IMG_0001.MOV", "changed");
  for (const char* path : {"2026-05-20/iPhone IMG_0001.HEIC", "2026-05-21/iPhone IMG_0003.MOV"}) {
    const std::string numbered = std::string{path}.insert(std::string{path}.find('.'), " (2)");
    std::filesystem::rename(inPhotos(path), inPhotos(numbered));
  }
  std::filesystem::remove(inPhotos(markerName));
  EXPECT_EQ(plannedFiles(prefixed), 2U);
  const CommandResult result = rebuild(prefixed);
  EXPECT_EQ(result.status, ExitStatus::done) << result.err;
  EXPECT_EQ(result.out,
            "The record of the phone “iPhone” was saved; newly recognised: 6 files.\n"
            "\n"
            "Files in the folder             7\n"
            "  recognised                    6\n"
            "    newly recognised            6\n"
            "  not recognised                1\n"
            "    the phone has no such file  1\n"
            "\n"
            "The phone has no such file:\n"
            "  2026-05-20/iPhone IMG_0001.MOV\n");
  EXPECT_EQ(plannedFiles(prefixed), 0U);
  EXPECT_EQ(verify().status, ExitStatus::done);
  const std::string marker = tester.folder.read("photos/" + markerName);
  EXPECT_THAT(rebuild(prefixed).out, HasSubstr("already in the record       6\n"));
  EXPECT_EQ(tester.folder.read("photos/" + markerName), marker);
}

TEST_F(VerifyCommand, rebuild_addsToWhatIsThereAndKeepsTheDamaged) {
  transfer();
  tester.run({"transfer", "phone", "photos", "--device-name", "iPad"});
  const std::string other = DestinationMarker::fileName(snapshotPhone("iPad").hash);
  std::filesystem::remove(inPhotos("2026-05-21/IMG_0003.MOV"));
  std::filesystem::copy_file(inPhotos("2026-05-21/IMG_0002.JPG"), inPhotos("copy.JPG"));
  EXPECT_EQ(rebuild().status, ExitStatus::done);
  // Recorded files stay recorded, even if they are missing.
  EXPECT_THAT(statesOf(verify({"--json"})),
              AllOf(testing::Contains(Pair("2026-05-21/IMG_0003.MOV", "missing")),
                    testing::Contains(Pair("copy.JPG", "intact")), testing::SizeIs(7 + 7 + 1)));
  tester.folder.write("photos/" + markerName, "{ broken");
  const std::string otherRecord = tester.folder.read("photos/" + other);
  EXPECT_EQ(rebuild().status, ExitStatus::done);
  EXPECT_EQ(tester.folder.read("photos/" + markerName + ".damaged"), "{ broken");
  EXPECT_EQ(tester.folder.read("photos/" + other), otherRecord);
  EXPECT_EQ(verify().status, ExitStatus::done);
}

TEST_F(VerifyCommand, rebuildWithTheWrongPhone_saysThatThereIsNoRecord) {
  transfer();
  for (std::size_t i = 0; i < smallMedia.size(); ++i) {
    tester.folder.write("phone/media/" + smallMedia[i], "another " + std::to_string(10 + i));
  }
  std::filesystem::remove(inPhotos(markerName));
  EXPECT_THAT(rebuild({"--device-name", "Wrong"}).out,
              StartsWith("No file was recognised; the folder has no record of the phone “Wrong”."));
  EXPECT_FALSE(
      tester.folder.has("photos/" + DestinationMarker::fileName(snapshotPhone("Wrong").hash)));
}

TEST_F(VerifyCommand, rebuildThatFails_tellsAndChangesNothing) {
  transfer();
  std::filesystem::remove(inPhotos(markerName));
  std::filesystem::remove(tester.folder / "phone/media/IMG_0002.JPG");
  const CommandResult unreadable = rebuild({"--json"});
  EXPECT_EQ(unreadable.status, ExitStatus::someFailed);
  EXPECT_EQ(*unreadable.json().member("unreadableAssets"),
            parseJson(R"(["100APPLE/IMG_0002.JPG"])"));
  EXPECT_THAT(statesOf(unreadable),
              testing::Contains(Pair("2026-05-21/IMG_0002.JPG", "unmatched")));
  std::filesystem::remove(inPhotos(markerName));
  tester.isInterrupted = true;
  const CommandResult cancelled = rebuild();
  EXPECT_EQ(cancelled.status, ExitStatus::cancelled);
  EXPECT_THAT(cancelled.err, HasSubstr("after 0 of 7 files; no new file was recognised"));
  EXPECT_FALSE(tester.folder.has("photos/" + markerName));
  tester.isInterrupted = false;
  std::filesystem::remove_all(tester.folder / "phone/media");
  EXPECT_THAT(rebuild().err, HasSubstr("There is no folder"));
  EXPECT_EQ(tester.run({"marker", "rebuild", "phone", "photosNone"}).status, ExitStatus::stopped);
  EXPECT_FALSE(tester.folder.has("photosNone"));
}

}  // namespace
}  // namespace tavrix::cli
