#include <fmt/format.h>

#include <regex>

#include "cli/printing/ReadingBar.h"
#include "cli/tests/CommandTester.h"
#include "device/folders/SourceFolder.h"
#include "device/metadata/tests/support/MediaBytes.h"
#include "device/thumbnails/ThumbnailCache.h"
#include "settings/StateFolder.h"

namespace tavrix::cli {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string still(const std::string& date) {
  using namespace testbytes;
  Exif exif = capture(date, "+00:00");
  exif.gps = position("N", {41, 1, 54, 1, 0, 1}, "E", {12, 1, 30, 1, 0, 1});
  return jpeg(exifSegment(exif) + frame(4032, 3024));
}

std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file{path, std::ios::binary};
  return std::string{std::istreambuf_iterator<char>{file}, {}};
}

/// A card: a shot with its sidecar, a film of the next day, and a picture without a date.
struct FolderCommandsTest : testing::Test {
  FolderCommandsTest() {
    tester.folder.write("phone/DCIM/100APPLE/IMG_0001.JPG", still("2026:05:20 12:00:00"));
    tester.folder.write("phone/DCIM/100APPLE/IMG_0001.AAE", "edit");
    tester.folder.write(
        "phone/DCIM/101APPLE/IMG_0001.MOV",
        testbytes::film(
            {.width = 1920, .height = 1080, .creationDate = "2026-05-21T23:30:00+0000"}));
    tester.folder.write("phone/DCIM/101APPLE/IMG_0002.PNG", testbytes::png(1136, 640, ""));
    setDate("phone/DCIM/101APPLE/IMG_0002.PNG");
    tester.environment["DEMO_STATE_DIR"] = tester.folder / "state";
  }

  /// Sets the modification time to 2026-05-23T10:00:00Z.
  void setDate(const std::string& name) const {
    const std::filesystem::file_time_type time{std::chrono::file_clock::from_sys(
        std::chrono::sys_seconds{std::chrono::seconds{1779530400}})};
    std::filesystem::last_write_time(tester.folder / name, time);
  }
  CommandResult run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--lang", "en"});
    return tester.run(std::move(arguments));
  }

  CommandTester tester;
};

TEST_F(FolderCommandsTest, catalogue_tellsWhatTheFilesTell) {
  const auto result = run({"catalog", "phone", "--json"});
  EXPECT_EQ(result.status, ExitStatus::done);
  EXPECT_EQ(result.err, "");
  const JsonValue catalogue = result.json();
  std::vector<std::string> lines;
  for (const JsonValue& file : *catalogue.asArray()) {
    const JsonValue* const date = file.member("captureDate");
    lines.push_back(*file.member("id")->asString() + " " +
                    (file.member("name")->asString()->ends_with("AAE") ? "" : *date->asString()));
  }
  EXPECT_THAT(lines,
              ElementsAre("100APPLE/IMG_0001.AAE ", "100APPLE/IMG_0001.JPG 2026-05-20T12:00:00Z",
                          "101APPLE/IMG_0001.MOV 2026-05-21T23:30:00Z",
                          "101APPLE/IMG_0002.PNG 2026-05-23T10:00:00Z"));
  EXPECT_NEAR(*(*catalogue.asArray())[1].member("location")->member("latitude")->asNumber(), 41.9,
              1e-9);
}

TEST_F(FolderCommandsTest, snapshotOfAFolder_readsBackAsTheSameAssets) {
  tester.folder.write("phone/DCIM/100APPLE/\xFF.JPG", "no picture");
  tester.folder.write("phone/DCIM/100APPLE/\x80.JPG", "no picture either");
  const auto before = run({"catalog", "phone", "--json"});
  const auto written = run({"snapshot", "phone", "other"});
  EXPECT_EQ(written.status, ExitStatus::done);
  const auto after = run({"catalog", "other", "--json"});
  EXPECT_EQ(after.out, before.out);
  EXPECT_EQ(before.json().asArray()->size(), 6U);
  tester.environment["SNAPSHOT_OUT"] = tester.folder / "recorded";
  run({"groups", "phone"});
  EXPECT_EQ(tester.folder.read("recorded/snapshot.json"),
            tester.folder.read("other/snapshot.json"));
}

TEST_F(FolderCommandsTest, transfer_copiesEveryFileAndThenHasNothingToDo) {
  tester.folder.write("phone/DCIM/101APPLE/\xFF.PNG", testbytes::png(10, 10, ""));
  setDate("phone/DCIM/101APPLE/\xFF.PNG");
  const std::vector<std::string> call{"transfer", "phone", "photos", "--set", "uiMode=byDate"};
  EXPECT_EQ(run(call).status, ExitStatus::done);
  std::map<std::string, std::string> copies;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator{tester.folder / "photos"}) {
    const std::string name = entry.path().filename().string();
    if (entry.is_regular_file() && !name.starts_with("phone-")) {
      copies[name] = contentOf(entry.path());
    }
  }
  EXPECT_EQ(copies.size(), 5U);
  EXPECT_EQ(copies["IMG_0001.JPG"], tester.folder.read("phone/DCIM/100APPLE/IMG_0001.JPG"));
  EXPECT_EQ(copies["IMG_0001.MOV"], tester.folder.read("phone/DCIM/101APPLE/IMG_0001.MOV"));
  EXPECT_EQ(copies["\xEF\xBF\xBD.PNG"], testbytes::png(10, 10, ""));
  EXPECT_THAT(run(call).out, HasSubstr("nothing to do"));
}

TEST_F(FolderCommandsTest, foldersOfTwoPhones_neverTakeEachOthersFiles) {
  tester.folder.write("other/DCIM/100APPLE/IMG_0001.JPG", still("2026:05:20 13:00:00") + "other");
  run({"transfer", "phone", "photos"});
  EXPECT_EQ(run({"transfer", "other", "photos"}).status, ExitStatus::done);
  std::size_t copies = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator{tester.folder / "photos"}) {
    const std::string name = entry.path().filename().string();
    if (name.starts_with("IMG_0001") && name.ends_with(".JPG")) ++copies;
  }
  EXPECT_EQ(copies, 2U);
  // Nor does a phone copy its own files twice.
  EXPECT_THAT(run({"transfer", "other", "photos"}).out, HasSubstr("nothing to do"));
  EXPECT_THAT(run({"transfer", "phone", "photos"}).out, HasSubstr("nothing to do"));
}

TEST_F(FolderCommandsTest, anotherCardInThePlaceOfTheFirst_losesNoPicture) {
  const auto copies = [&] {
    std::map<std::string, std::string> found;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator{tester.folder / "photos"}) {
      const std::string name = entry.path().filename().string();
      if (name.starts_with("IMG_0001") && !name.ends_with(".MOV")) {
        found[name] = contentOf(entry.path());
      }
    }
    return found;
  };
  struct Shot {
    std::string picture;
    std::string sidecar;
  };
  const std::string picture = "phone/DCIM/100APPLE/IMG_0001.JPG";
  const auto insert = [&](const Shot& shot) {
    tester.folder.write(picture, shot.picture);
    tester.folder.write("phone/DCIM/100APPLE/IMG_0001.AAE", shot.sidecar);
  };
  // Different cards use the same numbers, and uncompressed pictures have the same size.
  const Shot first{tester.folder.read(picture), "edit"};
  const Shot second{still("2026:05:20 13:07:31"), "EDIT"};
  ASSERT_EQ(first.picture.size(), second.picture.size());
  EXPECT_EQ(run({"transfer", "phone", "photos"}).status, ExitStatus::done);
  // A rebuilt record distinguishes them just as the record of a run does.
  std::filesystem::remove(
      tester.folder.path() + "/photos/" +
      DestinationMarker::fileName(folderPhone(tester.folder / "phone", "").hash));
  EXPECT_EQ(run({"marker", "rebuild", "phone", "photos"}).status, ExitStatus::done);
  for (const Shot& shot : {second, first, second}) {
    insert(shot);
    EXPECT_EQ(run({"transfer", "phone", "photos"}).status, ExitStatus::done);
  }
  EXPECT_THAT(copies(), ElementsAre(testing::Pair("IMG_0001 (2).AAE", second.sidecar),
                                    testing::Pair("IMG_0001 (2).JPG", second.picture),
                                    testing::Pair("IMG_0001.AAE", first.sidecar),
                                    testing::Pair("IMG_0001.JPG", first.picture)));
  // The marker has both, each with its digest.
  EXPECT_EQ(run({"verify", "photos"}).status, ExitStatus::done);
  for (const Shot& shot : {first, second}) {
    insert(shot);
    EXPECT_THAT(run({"transfer", "phone", "photos"}).out, HasSubstr("nothing to do"));
    EXPECT_EQ(run({"transfer", "phone", "photos", "--set", "onlyNew=false"}).status,
              ExitStatus::done);
  }
  EXPECT_EQ(copies().size(), 4U);
}

TEST_F(FolderCommandsTest, secondLook_readsNothing) {
  EXPECT_THAT(run({"catalog", "phone", "--verbose"}).err,
              HasSubstr("metadata: cache hits 0, fetching 4\n"));
  EXPECT_THAT(run({"groups", "phone", "--verbose"}).err,
              HasSubstr("metadata: cache hits 4, fetching 0\n"));
  EXPECT_THAT(run({"cache"}).out, HasSubstr("holds 4 entries"));
  EXPECT_EQ(run({"cache", "--json"}).json().member("records")->asNumber(), 4);
  EXPECT_THAT(run({"cache"}).out, Not(HasSubstr("Thumbnails"))) << "there are none";
  const ThumbnailCache::Setup setup{.folder = *thumbnailFolderOf(tester.environment, std::nullopt),
                                    .programVersion = "1",
                                    .now = [] { return Instant{}; }};
  ThumbnailCache{setup}.keep({.source = "P", .path = "a"}, NotShowable{});
  EXPECT_THAT(run({"cache"}).out, HasSubstr("\nThumbnails: 1 file, "));
  const auto json = run({"cache", "--json"}).json();
  EXPECT_EQ(json.member("thumbnailFiles")->asNumber(), 1);
  EXPECT_EQ(*json.member("thumbnailDirectory")->asString(), setup.folder);
  EXPECT_EQ(run({"cache", "reset"}).out,
            "The cache was reset, removed: 1 file.\nThe thumbnails were removed: 1 file.\n");
  EXPECT_EQ(run({"cache", "reset"}).out, "The cache is already empty.\n");
  EXPECT_THAT(run({"catalog", "phone", "--verbose"}).err, HasSubstr("fetching 4\n"));
}

TEST_F(FolderCommandsTest, interrupt_keepsWhatWasRead) {
  tester.isInterrupted = true;
  const auto result = run({"catalog", "phone"});
  EXPECT_EQ(result.status, ExitStatus::cancelled);
  EXPECT_EQ(result.out, "");
  EXPECT_THAT(result.err, HasSubstr("Reading was stopped."));
}

TEST_F(FolderCommandsTest, interruptWhileFilesAreRead_keepsThoseThatWere) {
  for (int i = 0; i < 60; ++i) {
    tester.folder.write(fmt::format("phone/DCIM/102APPLE/IMG_{:04}.JPG", i),
                        still("2026:05:20 12:00:00"));
  }
  tester.errColumns = 100;
  int looks = 0;
  tester.atClock = [&](std::stop_source& stop) {
    if (++looks == 30) stop.request_stop();
  };
  const auto stopped = run({"catalog", "phone", "--verbose"});
  EXPECT_EQ(stopped.status, ExitStatus::cancelled);
  EXPECT_EQ(stopped.out, "");
  EXPECT_THAT(stopped.err, HasSubstr("Reading: 0 / 64 files"));
  // The bar is erased before any other output.
  EXPECT_THAT(stopped.err, HasSubstr("\r\x1b[Ktavrix: Reading was stopped. What was read"));
  EXPECT_THAT(stopped.err, HasSubstr("cache hits 0, fetching 64\n"));
  tester.atClock = nullptr;
  const auto resumed = run({"catalog", "phone", "--verbose"});
  EXPECT_EQ(resumed.status, ExitStatus::done);
  std::smatch counts;
  const std::regex line{"cache hits (\\d+), fetching (\\d+)\n"};
  ASSERT_TRUE(std::regex_search(resumed.err, counts, line)) << resumed.err;
  EXPECT_GE(std::stoi(counts[1]), 25);
  EXPECT_LE(std::stoi(counts[1]), 30);
  EXPECT_EQ(std::stoi(counts[1]) + std::stoi(counts[2]), 64);
  // This call reads no file, so it shows no bar.
  EXPECT_THAT(run({"catalog", "phone"}).err, Not(HasSubstr("Reading:")));
}

TEST_F(FolderCommandsTest, whatIsLeftOut_isToldOnStandardError) {
  for (int i = 0; i < 5; ++i) {
    tester.folder.write(fmt::format("phone/DCIM/100APPLE/._IMG_{}.JPG", i), "x");
  }
  tester.folder.write("phone/DCIM/100APPLE/.IMG_9.HEIC.icloud", "x");
  std::filesystem::create_symlink("/", tester.folder / "phone/DCIM/loop");
  const auto result = tester.run({"catalog", "phone"});
  EXPECT_EQ(result.err,
            "tavrix: Пропущены скрытые файлы и папки (5): 100APPLE/._IMG_0.JPG, "
            "100APPLE/._IMG_1.JPG, 100APPLE/._IMG_2.JPG и другие.\n"
            "tavrix: Пропущены файлы, которые есть только в облаке (1): "
            "100APPLE/.IMG_9.HEIC.icloud; скачайте их и повторите.\n"
            "tavrix: Пропущены ссылки (1): loop; если нужно, положите на их место сами файлы.\n");
}

TEST_F(FolderCommandsTest, placesThatHoldEachOther_areRefused) {
  const std::string card = tester.folder / "phone";
  for (const std::string& destination :
       {card, card + "/out", card + "/DCIM/100APPLE", tester.folder.path()}) {
    for (const char* const command : {"transfer", "plan"}) {
      EXPECT_EQ(run({command, "phone", destination}).status, ExitStatus::usage) << destination;
    }
  }
  for (const std::string& folder : {card, card + "/out", card + "/DCIM/100APPLE"}) {
    EXPECT_EQ(run({"snapshot", "phone", folder}).status, ExitStatus::usage) << folder;
  }
  EXPECT_FALSE(tester.folder.has("phone/out"));
  EXPECT_FALSE(tester.folder.has("phone/snapshot.json"));
  EXPECT_EQ(run({"snapshot", "phone", tester.folder.path()}).status, ExitStatus::done);
}

TEST_F(FolderCommandsTest, sourceReachedByALink_isKeptFreeAllTheSame) {
  std::filesystem::create_directories(tester.folder / "card");
  std::filesystem::create_directory_symlink("../phone/DCIM", tester.folder / "card/DCIM");
  const std::string card = tester.folder / "card";
  const std::string media = tester.folder / "phone/DCIM";
  for (const std::string& inside : {media + "/out", media, tester.folder / "phone"}) {
    EXPECT_EQ(run({"transfer", card, inside}).status, ExitStatus::usage) << inside;
  }
  EXPECT_EQ(run({"snapshot", card, media + "/out"}).status, ExitStatus::usage);
  const auto result = run({"catalog", card, "--state", media + "/state"});
  EXPECT_EQ(result.status, ExitStatus::usage);
  EXPECT_THAT(result.err, HasSubstr("--state DIR"));
  EXPECT_EQ(run({"catalog", "phone", "--state", tester.folder / "phone/state"}).status,
            ExitStatus::usage);
  tester.environment["SNAPSHOT_OUT"] = media + "/out";
  EXPECT_EQ(run({"groups", card}).status, ExitStatus::usage);
  for (const char* const name : {"phone/DCIM/out", "phone/DCIM/state", "phone/state"}) {
    EXPECT_FALSE(tester.folder.has(name)) << name;
  }
}

TEST_F(FolderCommandsTest, folderTooDeepToRead_isToldByEveryStatus) {
  std::string deep = "phone/DCIM/100APPLE";
  for (int i = 0; i < SourceFolder::maxDepth + 1; ++i) deep += "/x";
  tester.folder.write(deep + "/IMG_0009.JPG", "x");
  const auto listed = run({"catalog", "phone", "--json"});
  EXPECT_EQ(listed.status, ExitStatus::someFailed);
  EXPECT_EQ(listed.json().asArray()->size(), 4U);
  EXPECT_EQ(run({"snapshot", "phone", "other"}).status, ExitStatus::someFailed);
  const auto copied = run({"transfer", "phone", "photos"});
  EXPECT_EQ(copied.status, ExitStatus::someFailed);
  EXPECT_THAT(copied.out, HasSubstr("was read only in part"));
  EXPECT_THAT(copied.out, HasSubstr("Not read in full in the source: 1 folder."));
  const auto record = run({"history", tester.recordID().text().substr(0, 8)});
  EXPECT_THAT(record.out, HasSubstr("Not read in full in the source: 1 folder; "));
  const auto again = run({"transfer", "phone", "photos"});
  EXPECT_EQ(again.status, ExitStatus::someFailed);
  EXPECT_THAT(again.out, HasSubstr("Not read in full in the source: 1 folder."));
}

TEST_F(FolderCommandsTest, folderThatCannotBeOpened_isToldByEveryStatus) {
  const auto copied =
      tester.runKeptOutOf("phone/DCIM/101APPLE", {"transfer", "phone", "photos", "--lang", "en"});
  EXPECT_EQ(copied.status, ExitStatus::someFailed);
  EXPECT_THAT(copied.err, HasSubstr("Cannot open folders (1): 101APPLE; check"));
  EXPECT_THAT(copied.out, HasSubstr("Not read in full in the source: 1 folder."));
  const auto listed =
      tester.runKeptOutOf("phone/DCIM/101APPLE", {"catalog", "phone", "--json", "--lang", "en"});
  EXPECT_EQ(listed.status, ExitStatus::someFailed);
  EXPECT_EQ(listed.json().asArray()->size(), 2U);
  // Once the folder can be opened, the remaining files are copied.
  EXPECT_EQ(run({"transfer", "phone", "photos"}).status, ExitStatus::done);
  EXPECT_THAT(run({"verify", "photos"}).out, HasSubstr("4"));
}

TEST_F(FolderCommandsTest, mediaFoldersThatDifferByCase_areNotTakenForOne) {
  tester.folder.write("phone/dcim/100APPLE/IMG_0009.JPG", still("2026:05:20 12:00:00"));
  const auto result = run({"catalog", "phone", "--json"});
  EXPECT_EQ(result.status, ExitStatus::done);
  EXPECT_EQ(result.json().asArray()->size(), 4U);
  EXPECT_THAT(result.err, HasSubstr("/phone/dcim” was skipped, because the source is"));
  const auto other = run({"catalog", tester.folder / "phone/dcim", "--json"});
  EXPECT_EQ(other.json().asArray()->size(), 1U);
  EXPECT_EQ(other.err, "");
}

TEST_F(FolderCommandsTest, cardThatTheDestinationKnows_isSaidBeforeItIsCopiedAgain) {
  run({"transfer", "phone", "photos"});
  std::filesystem::create_directories(tester.folder / "other");
  std::filesystem::copy(tester.folder / "phone", tester.folder / "other",
                        std::filesystem::copy_options::recursive);
  setDate("other/DCIM/101APPLE/IMG_0002.PNG");
  for (const char* const command : {"plan", "transfer"}) {
    EXPECT_THAT(run({command, "other", "photos"}).err,
                HasSubstr("or under another name: 4 of 4 files match"))
        << command;
  }
  // Now the destination knows it by its own path.
  EXPECT_EQ(run({"transfer", "other", "photos"}).err, "");

  run({"transfer", "phone", "photos-2", "--device-name", "Card"});
  EXPECT_THAT(run({"plan", "other", "photos-2"}).err, HasSubstr("--device-name 'Card'"));
  const auto named = run({"transfer", "other", "photos-2", "--device-name", "Card"});
  EXPECT_EQ(named.err, "");
  EXPECT_THAT(named.out, HasSubstr("nothing to do"));
  // If less than half of the files are known, it is treated as a different card.
  for (int i = 0; i < 5; ++i) {
    tester.folder.write(fmt::format("other/DCIM/102APPLE/IMG_{}.JPG", i), "x");
  }
  EXPECT_EQ(run({"plan", "other", "photos-2"}).err, "");
}

TEST_F(FolderCommandsTest, folderThatIsNoSource_isSaidWithTheRemedy) {
  tester.folder.write("other/Wedding/a.JPG", "x");
  tester.folder.write("card/snapshot.json", "[]");
  const std::map<std::string, std::string> rows{
      {"other", "a DCIM folder"},
      {"missing", "There is nothing at “"},
      {"other/Wedding/a.JPG", "is a file; name a folder"},
      {"card/snapshot.json", "name the folder that contains it: “" + tester.folder / "card" + "”"}};
  for (const auto& [source, sentence] : rows) {
    const auto result = run({"catalog", tester.folder / source});
    EXPECT_EQ(result.status, ExitStatus::stopped);
    EXPECT_THAT(result.err, HasSubstr(sentence));
  }
}

TEST_F(FolderCommandsTest, withoutStateFolder_everythingWorksButTheCache) {
  tester.environment.erase("DEMO_STATE_DIR");
  tester.environment["XDG_STATE_HOME"] = "";
  EXPECT_EQ(run({"catalog", "phone"}).status, ExitStatus::done);
  EXPECT_THAT(run({"catalog", "phone", "--verbose"}).err, HasSubstr("fetching 4\n"));
  EXPECT_EQ(run({"cache"}).status, ExitStatus::stopped);
  run({"catalog", "phone", "--state", tester.folder / "a/b"});
  EXPECT_THAT(run({"cache", "--state", tester.folder / "a/b"}).out, HasSubstr("4 entries"));
}

TEST_F(FolderCommandsTest, readingBar_showsCountsSpeedAndHits) {
  StringSink terminal;
  const std::chrono::steady_clock::time_point start{};
  {
    const Messages wide{terminal, {.columns = 100}};
    ReadingBar bar{wide};
    EXPECT_THAT(
        bar.text({50'000, 12'000, 1'400}, std::chrono::seconds{4}),
        EndsWith("Чтение: 13\u00A0400 / 50\u00A0000 файлов · 350 файлов/с · осталось 1:45 · "
                 "из кэша: 12\u00A0000"));
    const Messages narrow{terminal, {.columns = 40, .language = Language::english}};
    EXPECT_EQ(ReadingBar{narrow}.text({1'234'567, 12'000, 59'090}, std::chrono::seconds{4}),
              "Reading: 71,090 / 1,234,567 files");
    EXPECT_THAT(bar.text({1, 0, 0}, {}), EndsWith("Чтение: 0 / 1 файлов"));
    bar.show({10, 10, 0}, start);
    EXPECT_THAT(terminal.text(), IsEmpty());
    bar.show({10, 0, 1}, start);
    const std::string once = terminal.text();
    bar.show({10, 0, 2}, start + std::chrono::milliseconds{50});
    EXPECT_EQ(terminal.text(), once);
    EXPECT_THAT(once, Not(IsEmpty()));
  }
  EXPECT_THAT(terminal.text(), EndsWith("\r\x1b[K"));
}

TEST(StateFolder, firstThatIsNamed_counts) {
  StateFolderChoice choice{"a", "b", "/c", "/d"};
  EXPECT_EQ(stateFolderPath(choice), "a");
  choice.chosen.reset();
  EXPECT_EQ(stateFolderPath(choice), "b");
  choice.demo.reset();
  EXPECT_EQ(stateFolderPath(choice), "/c/Tavrix/state");
  choice.stateHome = "relative";
  EXPECT_EQ(stateFolderPath(choice), "/d/.local/state/Tavrix/state");
  choice.home.reset();
  EXPECT_EQ(stateFolderPath(choice), std::nullopt);
}

TEST_F(FolderCommandsTest, filesOfAnUnknownKind_areToldAsWhatTheyAre) {
  tester.folder.write("phone/DCIM/100APPLE/CLIP.XYZ", "a film");
  tester.folder.write("phone/DCIM/100APPLE/LONE.AAE", "an edit");
  const std::string note = "the program does not know the kind of file: 1 file (CLIP.XYZ)";
  const auto result = run({"transfer", "phone", "photos"});
  EXPECT_THAT(result.out, HasSubstr(note));
  EXPECT_THAT(result.out, testing::ContainsRegex("files of an unknown kind +1"));
  EXPECT_THAT(result.out, testing::ContainsRegex("their picture is not on the phone +1"));
  EXPECT_THAT(run({"history", "last"}).out, HasSubstr(note));
}

TEST_F(FolderCommandsTest, stateFolderInTheSource_isRefusedBeforeItIsMade) {
  const std::string state = tester.folder / "phone/DCIM/state";
  for (const auto& arguments :
       std::vector<std::vector<std::string>>{{"groups", "phone", "--state", state},
                                             {"transfer", "phone", "photos", "--state", state}}) {
    EXPECT_EQ(run(arguments).status, ExitStatus::usage) << arguments.front();
    EXPECT_FALSE(std::filesystem::exists(state)) << arguments.front();
  }
}

}  // namespace
}  // namespace tavrix::cli
