#include "cli/tests/CommandTester.h"
#include "foundation/files/Folder.h"
#include "runs/Destination.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::vector<std::string> textsAt(const JsonValue& list, std::string_view field) {
  std::vector<std::string> texts;
  for (const JsonValue& each : *list.asArray()) {
    texts.push_back(field.empty() ? *each.asString() : *each.member(field)->asString());
  }
  return texts;
}

/// Returns the numbers of a summary by their labels.
std::map<std::string, int> tallyOf(const std::string& out) {
  std::map<std::string, int> tally;
  std::istringstream lines{out};
  for (std::string line; std::getline(lines, line);) {
    const auto gap = line.rfind("  ");
    const auto label = line.find_first_not_of(' ');
    if (gap == std::string::npos || gap <= label) continue;
    const auto number = line.find_first_of("0123456789", gap);
    if (number == std::string::npos) continue;
    const auto end = line.find_last_not_of(' ', gap);
    tally[line.substr(label, end - label + 1)] = std::stoi(line.substr(number));
  }
  return tally;
}

struct TransferCommand : testing::Test {
  TransferCommand() { tester.addPhone(smallSnapshot, smallMedia); }

  CommandResult transfer(std::vector<std::string> more = {}) const {
    std::vector<std::string> call{"transfer", "phone", "photos"};
    call.insert(call.end(), more.begin(), more.end());
    return tester.run(call);
  }
  std::vector<std::string> copiedPaths(std::vector<std::string> more = {}) const {
    more.emplace_back("--json");
    return textsAt(*transfer(more).json().member("report")->member("files"), "path");
  }
  std::string marker() const {
    return tester.folder.read("photos/" +
                              DestinationMarker::fileName(snapshotPhone("iPhone").hash));
  }

  CommandTester tester;
};

TEST_F(TransferCommand, run_thenAgain_thenAfterARemoval) {
  const CommandResult first = transfer();
  EXPECT_EQ(first.status, ExitStatus::done) << first.err;
  EXPECT_THAT(first.err, IsEmpty());
  EXPECT_EQ(first.out,
            "Перенос завершён, записано 70\u00A0Б.\n"
            "\n"
            "В каталоге                              8\n"
            "  пропущены: их снимка нет на телефоне  1\n"
            "  к переносу                            7\n"
            "    скопированы                         7\n"
            "\n"
            "Подробности: tavrix history 6a0ef3c0\n");
  EXPECT_EQ(tester.folder.read("photos/2026-05-20/IMG_E0001.HEIC"), "0123456789");
  EXPECT_EQ(tester.folder.read("photos/No date/IMG_0004.PNG"), "0123456789");

  const std::string markerAfterFirst = marker();
  tester.time += std::chrono::hours{1};
  const CommandResult second = transfer({"--lang", "en"});
  EXPECT_EQ(second.status, ExitStatus::done);
  EXPECT_THAT(second.out, AllOf(StartsWith("There is nothing to do"),
                                HasSubstr("already in the folder                       7\n")));
  EXPECT_EQ(marker(), markerAfterFirst);

  std::filesystem::remove(tester.folder / "photos/2026-05-21/IMG_0003.MOV");
  EXPECT_THAT(copiedPaths(), ElementsAre("2026-05-21/IMG_0003.MOV"));
  EXPECT_THAT(marker(), AllOf(HasSubstr(R"("firstTransfer": "2026-05-21T12:00:00Z")"),
                              HasSubstr(R"("lastTransfer": "2026-05-21T13:00:00Z")")));
}

TEST_F(TransferCommand, folderWithoutRights_isOneSentenceBeforeAnythingStarts) {
  std::filesystem::create_directories(tester.folder / "photos");
  const auto readOnly = std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec;
  for (const char* const command : {"plan", "transfer"}) {
    const CommandResult result =
        tester.runKeptOutOf("photos", {command, "phone", "photos", "--lang", "en"}, readOnly);
    EXPECT_EQ(result.status, ExitStatus::stopped);
    EXPECT_EQ(result.err, "tavrix: Cannot access “" + (tester.folder / "photos") +
                              "”: permission denied; check the path, the permissions and the "
                              "disk.\n");
  }
  const CommandResult unreadable =
      tester.runKeptOutOf("phone/media", {"transfer", "phone", "photos", "--lang", "en"});
  EXPECT_EQ(unreadable.status, ExitStatus::stopped);
  EXPECT_THAT(unreadable.err, HasSubstr("/phone/media”: permission denied"));
  EXPECT_TRUE(std::filesystem::is_empty(tester.folder / "photos"));
}

TEST_F(TransferCommand, prefix_isKnownOnTheSecondLook) {
  const std::vector<std::string> prefixed{"--set", "fileNamePrefixMode=phone"};
  transfer();
  EXPECT_EQ(copiedPaths(prefixed).size(), 7U);
  EXPECT_TRUE(tester.folder.has("photos/2026-05-20/iPhone IMG_0001.HEIC"));
  EXPECT_THAT(copiedPaths(prefixed), IsEmpty());
  EXPECT_THAT(copiedPaths(), IsEmpty());
}

TEST_F(TransferCommand, deviceName_comesFromOptionThenVariable) {
  const auto firstPath = [&](std::vector<std::string> more) {
    more.insert(more.begin(),
                {"plan", "phone", "photos", "--json", "--set", "fileNamePrefixMode=phone"});
    return textsAt(*tester.run(more).json().member("files"), "relativePath").front();
  };
  EXPECT_EQ(firstPath({}), "2026-05-20/iPhone IMG_0001.HEIC");
  tester.environment = {{"DEMO_DEVICE_NAME", "Дача"}};
  EXPECT_EQ(firstPath({}), "2026-05-20/Дача IMG_0001.HEIC");
  EXPECT_EQ(firstPath({"--device-name", "Anna"}), "2026-05-20/Anna IMG_0001.HEIC");
}

TEST_F(TransferCommand, plan_showsFoldersAndWritesNothing) {
  const CommandResult before = tester.run({"plan", "phone", "photos", "--lang", "en"});
  EXPECT_EQ(before.status, ExitStatus::done);
  EXPECT_FALSE(tester.folder.has("photos"));
  transfer();
  std::filesystem::remove(tester.folder / "photos/2026-05-21/IMG_0003.MOV");
  const CommandResult after = tester.run({"plan", "phone", "photos", "--lang", "en"});
  EXPECT_THAT(after.out, AllOf(StartsWith("Folder      New  Size  Already there\n"
                                          "2026-05-20    0   0\u00A0B              4\n"
                                          "2026-05-21    1  10\u00A0B              1\n"
                                          "No date       0   0\u00A0B              1\n"),
                               HasSubstr("To transfer: 1 file, 10\u00A0B into")));
  EXPECT_FALSE(tester.folder.has("photos/2026-05-21/IMG_0003.MOV"));
  const JsonValue json = tester.run({"plan", "phone", "photos", "--json"}).json();
  EXPECT_EQ(*json.member("files"), parseJson(R"([{"assetID":"100APPLE/IMG_0003.MOV",
      "relativePath":"2026-05-21/IMG_0003.MOV","conversion":"none","isPicture":true,
      "bundleID":"100APPLE/IMG_0003","sizeBytes":10}])"));
  EXPECT_THAT(
      textsAt(*json.member("skippedKnown"), ""),
      ElementsAre("100APPLE/IMG_0001.HEIC", "100APPLE/IMG_0001.MOV", "100APPLE/IMG_0001.AAE",
                  "100APPLE/IMG_E0001.HEIC", "100APPLE/IMG_0002.JPG", "IMG_0004.PNG"));
  EXPECT_EQ(*json.member("onlyNew"), parseJson("true"));
}

TEST_F(TransferCommand, rehearsal_isThePlanAndWritesNothing) {
  const std::string plan = tester.run({"plan", "phone", "photos"}).out;
  EXPECT_EQ(transfer({"--dry-run"}).out, plan);
  EXPECT_FALSE(std::filesystem::exists(tester.folder / "photos"));
  const auto files = tester.run({"plan", "phone", "photos", "--files", "--lang", "en"}).out;
  EXPECT_THAT(files, HasSubstr("\n2026-05-21/IMG_0003.MOV"));
  const std::vector<std::string> packing{"--dry-run", "--lang", "en", "--set", "packAsZip=true"};
  EXPECT_THAT(transfer(packing).out, HasSubstr("\n  iPhone 2026-05-21.zip — 7 files, 70"));
}

TEST_F(TransferCommand, failuresOnATerminal_areTheFirstAndACount) {
  std::string entries;
  for (int i = 0; i < 30; ++i) {
    entries += fmt::format(R"({}{{"name":"IMG_{}.JPG","kind":"photo","size":10}})",
                           i == 0 ? "" : ",", 1000 + i);
  }
  tester.addPhone("[" + entries + "]");
  EXPECT_THAT(transfer().out, HasSubstr("/IMG_1029.JPG: "));
  tester.outColumns = 80;
  EXPECT_THAT(transfer().out,
              AllOf(HasSubstr("/IMG_1019.JPG: "), testing::Not(HasSubstr("IMG_1020.JPG")),
                    HasSubstr("\n  … и ещё 10\n")));
}

TEST_F(TransferCommand, programs_readProgressAndMessagesAsObjects) {
  for (const std::string form : {"--progress=json", "--progress json"}) {
    std::vector<std::string> options{form};
    if (const auto space = form.find(' '); space != std::string::npos) {
      options = {form.substr(0, space), form.substr(space + 1)};
    }
    const std::string err = transfer(options).err;
    const bool tellsTheEnd = err.find(R"("filesDone":7,"filesTotal":7,)") != std::string::npos;
    // The second run has nothing to copy.
    EXPECT_EQ(tellsTheEnd, !form.ends_with(" json")) << err;
    std::istringstream lines{err};
    for (std::string line; std::getline(lines, line);) {
      EXPECT_TRUE(parseJson(line).member("type") != nullptr) << line;
    }
  }
  const auto wrong = tester.run({"verify", "photos", "--progress=jsn"});
  EXPECT_EQ(wrong.status, ExitStatus::usage);
  EXPECT_THAT(tester.run({"verify", "photos-2", "--progress=json"}).err,
              StartsWith(R"({"type":"message","level":"error","text":")"));
}

TEST_F(TransferCommand, summary_addsUpHoweverTheRunGoes) {
  // One file is missing, one cannot be converted, one film is excluded, and one file already
  // exists.
  transfer({"--set", "includePhotos=false", "--set", "includeLive=false"});
  std::filesystem::remove(tester.folder / "phone/media/IMG_0002.JPG");
  const CommandResult result =
      transfer({"--lang", "en", "--set", "photoJPEG=true", "--set", "includeAAE=false"});
  EXPECT_EQ(result.status, ExitStatus::someFailed);
  const auto tally = tallyOf(result.out);
  const std::map<std::string, int> expected{{"In the catalogue", 8},
                                            {"skipped: their picture is not on the phone", 1},
                                            {"skipped by the settings", 1},
                                            {"already in the folder", 1},
                                            {"to transfer", 5},
                                            {"copied", 1},
                                            {"kept unconverted", 3},
                                            {"failed", 1}};
  EXPECT_EQ(tally, expected) << result.out;
  EXPECT_THAT(result.out,
              AllOf(HasSubstr("Not transferred:\n  2026-05-21/IMG_0002.jpg"),
                    HasSubstr("the file is not in the source"),
                    HasSubstr("unconverted:\n  IMG_0001.HEIC — the conversion did not take place"),
                    HasSubstr("Finished; 1 file could not be transferred.")));
}

TEST_F(TransferCommand, failedVerification_namesTheFileOnce) {
  tester.folder.write("phone/media/IMG_0002.JPG", "short");
  const CommandResult result = transfer();
  EXPECT_EQ(result.status, ExitStatus::someFailed);
  const std::string detail = "ожидалось 10 байт, получено 5";
  EXPECT_THAT(result.out,
              HasSubstr("  2026-05-21/IMG_0002.JPG: сверка не прошла — " + detail + "\n"));
  EXPECT_THAT(tester.run({"history", "last"}).out, HasSubstr("  сверка не прошла — " + detail));
  EXPECT_THAT(tester.run({"history", "last", "--json"}).out,
              HasSubstr("Сверка не прошла: IMG_0002.JPG — " + detail));
}

TEST_F(TransferCommand, failureInJson_isTheSameInEveryLanguage) {
  std::filesystem::remove(tester.folder / "phone/media/IMG_0002.JPG");
  const CommandResult russian = transfer({"--json"});
  EXPECT_EQ(russian.status, ExitStatus::someFailed);
  const JsonValue json = russian.json();
  EXPECT_EQ(*json.member("status")->asString(), "completedWithFailures");
  const JsonValue& report = *json.member("report");
  EXPECT_EQ(report.member("files")->asArray()->at(4),
            parseJson(R"({"assetID":"100APPLE/IMG_0002.JPG",
      "name":"IMG_0002.JPG","bytesOnDisk":0,"kind":"failed","reason":"файла нет в источнике",
      "reasonCode":{"code":"notInSource"}})"));
  EXPECT_EQ(*report.member("copiedPictures"), parseJson("4"));
  EXPECT_EQ(*report.member("bytesWritten"), parseJson("60"));
  std::filesystem::remove_all(tester.folder / "photos");
  EXPECT_EQ(transfer({"--json", "--lang", "en"}).out, russian.out);
}

TEST_F(TransferCommand, interrupt_endsWithTheReportAndLeavesTheRestForLater) {
  tester.isInterrupted = true;
  const CommandResult result = transfer();
  EXPECT_EQ(result.status, ExitStatus::cancelled);
  EXPECT_THAT(result.err, HasSubstr("Перенос отменён"));
  const auto tally = tallyOf(result.out);
  EXPECT_EQ(tally.at("к переносу"), 7);
  EXPECT_EQ(tally.at("скопированы"), 0);
  EXPECT_EQ(tally.at("не дошла очередь"), 7);
  EXPECT_EQ(*transfer({"--json"}).json().member("status")->asString(), "cancelled");
  tester.isInterrupted = false;
  EXPECT_EQ(copiedPaths().size(), 7U);
}

TEST_F(TransferCommand, unusableDestination_isOneSentenceAndNothingChanges) {
  const std::string newer = DestinationMarker::fileName(snapshotPhone("iPhone").hash);
  tester.folder.write("photosNewer/" + newer, R"({"schemaVersion":2,"phoneHash":")" +
                                                  snapshotPhone("iPhone").hash +
                                                  R"(","label":"a","model":"b","firstTransfer":)"
                                                  R"("2026-05-20T12:00:00Z","lastTransfer":)"
                                                  R"("2026-05-20T12:00:00Z","files":[]})");
  tester.folder.write("photosFile", "x");
  std::filesystem::create_directories(tester.folder / "photosBusy");
  const auto otherRun = openFolder(tester.folder / "photosBusy");
  ASSERT_TRUE(otherRun->lock());
  struct Row {
    std::string destination;
    std::string sentence;
    ExitStatus status = ExitStatus::stopped;
  };
  const std::vector<Row> rows{{"photosNewer", "newer version of the program (format 2)"},
                              {"photosFile", "is not a folder"},
                              {"photosBusy", "Another transfer into the folder"},
                              {"photosNone/x", "create the folder above it first"}};
  for (const Row& row : rows) {
    const CommandResult result = tester.run({"transfer", "phone", row.destination, "--lang", "en"});
    EXPECT_EQ(result.status, row.status) << row.destination;
    EXPECT_THAT(result.err, AllOf(StartsWith("tavrix: "), HasSubstr(row.sentence)));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
    EXPECT_THAT(result.out, IsEmpty());
  }
  EXPECT_TRUE(std::filesystem::is_empty(tester.folder / "photosBusy"));
  EXPECT_FALSE(tester.folder.has("photosNewer/2026-05-20"));
  EXPECT_FALSE(tester.folder.has("photosNone"));
  EXPECT_EQ(tester.run({"plan", "phone", "photosNewer"}).status, ExitStatus::stopped);
  EXPECT_EQ(tester.run({"plan", "phone", "photosBusy"}).status, ExitStatus::done);
}

TEST_F(TransferCommand, destinationInsideTheSource_isRefusedByAnyName) {
  std::filesystem::create_directory_symlink(tester.folder / "phone/media",
                                            tester.folder / "photosLink");
  std::filesystem::create_directory_symlink(tester.folder / "phone", tester.folder / "photosRoot");
  for (const std::string destination :
       {"photosLink", "photosLink/new", "photos/../phone/media/", "photosRoot/new"}) {
    for (const std::string command : {"transfer", "plan", "snapshot"}) {
      EXPECT_EQ(tester.run({command, "phone", destination}).status, ExitStatus::usage)
          << command << " " << destination;
    }
  }
  EXPECT_FALSE(tester.folder.has("phone/new"));
  EXPECT_EQ(tester.run({"plan", "phone", tester.folder / "phone2"}).status, ExitStatus::done);
}

TEST_F(TransferCommand, sourceWithoutMedia_stopsBeforeTheFirstFile) {
  std::filesystem::remove_all(tester.folder / "phone/media");
  const CommandResult result = transfer();
  EXPECT_EQ(result.status, ExitStatus::stopped);
  EXPECT_THAT(result.err, HasSubstr("phone/media"));
  EXPECT_EQ(tester.run({"transfer", "other", "photos"}).status, ExitStatus::stopped);
}

TEST_F(TransferCommand, settingsThatLeaveNothing_areSaidSo) {
  const CommandResult result = transfer({"--set", "periodFrom=2030-01-01"});
  EXPECT_EQ(result.status, ExitStatus::done);
  EXPECT_THAT(result.out, AllOf(StartsWith("Переносить нечего: настройки"),
                                HasSubstr("пропущены по настройкам               7\n")));
}

TEST_F(TransferCommand, emptyCatalogue_isNotBlamedOnTheSettings) {
  tester.addPhone("[]");
  EXPECT_THAT(transfer().out, StartsWith("Переносить нечего: в каталоге телефона нет"));
  EXPECT_THAT(tester.run({"plan", "phone", "photos", "--lang", "en"}).out,
              StartsWith("There is nothing to do: the phone's catalogue is empty."));
}

TEST_F(TransferCommand, oneFailure_isCountedAsOne) {
  std::filesystem::remove(tester.folder / "phone/media/IMG_0002.JPG");
  EXPECT_THAT(transfer().out,
              HasSubstr("не удалось перенести 1 файл; повторите — перенесётся только недостающее"));
}

TEST_F(TransferCommand, emptyDeviceName_beatsTheVariableAndGivesNoPrefix) {
  tester.environment = {{"DEMO_DEVICE_NAME", "Anna"}};
  const std::vector<std::string> flat{"--set", "fileNamePrefixMode=phone", "--set", "uiMode=flat"};
  EXPECT_THAT(copiedPaths(flat), testing::Contains("Anna IMG_0004.PNG"));
  std::filesystem::remove_all(tester.folder / "photos");
  std::vector<std::string> nameless = flat;
  nameless.emplace_back("--device-name=");
  EXPECT_THAT(copiedPaths(nameless), testing::Contains("IMG_0004.PNG"));
}

TEST_F(TransferCommand, archives_takeEverythingAtEveryRun) {
  transfer();
  const std::vector<std::string> zip{"--set", "packAsZip=true"};
  const CommandResult plan =
      tester.run({"plan", "phone", "photos", "--json", "--set", "packAsZip=true"});
  EXPECT_EQ(plan.json().member("files")->asArray()->size(), 7U);
  EXPECT_THAT(copiedPaths(zip),
              testing::Contains("iPhone 2026-05-21.zip/2026-05-20/IMG_0001.HEIC"));
  EXPECT_THAT(copiedPaths(zip), testing::Each(StartsWith("iPhone 2026-05-21 (2).zip/")));
  std::vector<std::string> perGroup = zip;
  perGroup.insert(perGroup.end(), {"--set", "packPerGroup=true"});
  const CommandResult result = transfer(perGroup);
  EXPECT_EQ(result.status, ExitStatus::done);
  EXPECT_EQ(tallyOf(result.out).at("скопированы"), 7);
  EXPECT_FALSE(tester.folder.has("photos/.Tavrix-staging"));
  const JsonValue record = tester.run({"history", "last", "--json"}).json();
  EXPECT_EQ(*record.member("options")->member("container")->asString(), "zipPerGroup");
  EXPECT_EQ(*record.member("totals"), parseJson(R"({"alreadyThere":0,"bytesWritten":70,"failed":0,
      "onMac":4,"optimized":0,"shots":4})"));
  EXPECT_THAT(tester.run({"history", "last"}).out, HasSubstr("2026-05-21.zip/2026-05-21/"));
  // All commands see loose files and archives as one set.
  const CommandResult verified = tester.run({"verify", "photos", "--json"});
  EXPECT_EQ(*verified.json().member("counts")->member("intact"), parseJson("12"));
  EXPECT_EQ(*verified.json().member("counts")->member("unknown"), parseJson("0"));
  EXPECT_EQ(transfer().status, ExitStatus::done);
  EXPECT_EQ(tester.run({"marker", "rebuild", "phone", "photos"}).status, ExitStatus::done);
  EXPECT_THAT(marker(), HasSubstr("\"path\": \"No date.zip\""));
}

TEST_F(TransferCommand, recordOfAKilledRun_tellsWhereItsFilesAre) {
  // The record of a run before it ends.
  std::string note;
  bool isLooking = false;
  tester.atClock = [&](std::stop_source&) {
    if (isLooking || !note.empty()) return;
    isLooking = true;
    const CommandResult last = tester.run({"history", "last", "--json"});
    isLooking = false;
    if (last.status != ExitStatus::done) return;
    const JsonValue record = last.json();
    if (*record.member("status")->asString() != "interrupted") return;
    note = *record.member("notes")->asArray()->front().asString();
  };
  transfer();
  EXPECT_THAT(note, HasSubstr("что успело скопироваться, лежит на месте"));
  note.clear();
  transfer({"--set", "packAsZip=true"});
  EXPECT_THAT(note, HasSubstr("что ждало упаковки, перенесётся заново"));
}

TEST_F(TransferCommand, conversions_areMadeOnceAndWhatCannotBeIsKeptWithItsReason) {
  // A red square of 4 × 4 pixels.
  const std::string png{
      "\211\120\116\107\015\012\032\012\000\000\000\015\111\110\104\122\000\000\000\004\000\000\000"
      "\004"
      "\010\002\000\000\000\046\223\011\051\000\000\000\020\111\104\101\124\170\332\143\070\041\047"
      "\007"
      "\107\014\304\161\000\261\143\020\101\323\112\314\015\000\000\000\000\111\105\116\104\256\102"
      "\140"
      "\202",
      73};
  tester.addPhone(R"([{"name":"IMG_1.PNG","kind":"photo","size":73},
                      {"name":"IMG_2.GIF","kind":"photo","size":73},
                      {"name":"IMG_3.MP4","kind":"video","size":73}])",
                  {"IMG_1.PNG", "IMG_2.GIF", "IMG_3.MP4"}, png);
  tester.folder.write("phone/media/IMG_2.GIF", "GIF89a" + std::string(67, 'x'));
  tester.folder.write("phone/media/IMG_3.MP4", std::string(73, 'x'));
  tester.conversionProgram = TAVRIX_CONVERT_PROGRAM;
  const std::vector<std::string> converting{"--set", "photoJPEG=true", "--set", "videoH264=true"};
  EXPECT_THAT(copiedPaths(converting),
              ElementsAre("No date/IMG_1.jpg", "No date/IMG_2.GIF", "No date/IMG_3.MP4"));
  EXPECT_THAT(tester.folder.read("photos/No date/IMG_1.jpg"), StartsWith("\xFF\xD8\xFF"));
  EXPECT_EQ(tester.folder.read("photos/No date/IMG_3.MP4"), std::string(73, 'x'));
  EXPECT_THAT(tester.run({"history", "last", "--json"}).out,
              AllOf(HasSubstr("такой формат не преобразуется"), HasSubstr("файл повреждён")));
  EXPECT_THAT(transfer(converting).out, StartsWith("Переносить нечего"));
}

TEST_F(TransferCommand, interruptedPacking_saysWhatARepetitionDoes) {
  tester.isInterrupted = true;
  const CommandResult result = transfer({"--set", "packAsZip=true"});
  EXPECT_EQ(result.status, ExitStatus::cancelled);
  EXPECT_THAT(result.err, HasSubstr("повтор упакует всё заново"));
  EXPECT_EQ(tallyOf(result.out).at("не дошла очередь"), 7);
  EXPECT_TRUE(std::filesystem::is_empty(tester.folder / "photos"));
}

TEST_F(TransferCommand, leftOversOfAKilledPacking_goWithTheNextRunOfAnyKind) {
  transfer();
  tester.folder.write("photos/.Tavrix-staging/2026-05-20/IMG_0001.HEIC", "0123456789");
  EXPECT_THAT(transfer({"--lang", "en"}).out, HasSubstr("temporary copies (1 file); they are"));
  EXPECT_FALSE(tester.folder.has("photos/.Tavrix-staging"));
  tester.folder.write("photos/.Tavrix-staging/2026-05-20/IMG_0777.HEIC", "not on the phone");
  EXPECT_THAT(transfer({"--lang", "en"}).out, HasSubstr("this phone does not hold: 1 file;"));
  EXPECT_EQ(tester.folder.read("photos/2026-05-20/IMG_0777.HEIC"), "not on the phone");
}

TEST_F(TransferCommand, flatMode_writesIntoTheDestinationItself) {
  EXPECT_THAT(copiedPaths({"--set", "uiMode=flat"}), testing::Contains("IMG_0004.PNG"));
  EXPECT_THAT(tester.run({"plan", "phone", "photos", "--set", "uiMode=flat"}).out,
              HasSubstr("(прямо в папке назначения)"));
}

TEST_F(TransferCommand, verbose_writesLogLinesAndTerminalGetsABar) {
  const CommandResult result = transfer({"--verbose"});
  EXPECT_THAT(result.err,
              AllOf(HasSubstr("transfer start: files=7, bytes=70, dest="),
                    HasSubstr("/photos, zip=false\n"),
                    HasSubstr("transfer finish: copied=7, resumed=0, bytes=70, failures=0")));
  tester.errColumns = 80;
  EXPECT_THAT(transfer({"--set", "onlyNew=false", "--set", "fileNamePrefixMode=phone"}).err,
              AllOf(HasSubstr("░░░"), HasSubstr(" / 7 файлов"), testing::EndsWith("\r\x1b[K")));
}

}  // namespace
}  // namespace tavrix::cli
