#include <gmock/gmock.h>

#include <filesystem>

#include "cli/tests/CommandTester.h"
#include "history/TransferRecordCoding.h"
#include "runs/RunRecording.h"
#include "settings/StateFolder.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

struct HistoryCommand : testing::Test {
  HistoryCommand() { tester.addPhone(smallSnapshot, smallMedia); }

  /// Runs a transfer and returns the id of its record.
  std::string transfer(std::vector<std::string> more = {}) {
    tester.time += std::chrono::seconds{1};
    std::vector<std::string> call{"transfer", "phone", "photos", "--json"};
    call.insert(call.end(), more.begin(), more.end());
    const JsonValue result = tester.run(call).json();
    const JsonValue* const id = result.member("recordID");
    return id == nullptr ? "" : *id->asString();
  }
  TransferRecord record(const std::string& id) const {
    return TransferRecordCoding::decode(tester.run({"history", id, "--json"}).out);
  }
  CommandResult history(std::vector<std::string> more = {}) const {
    more.insert(more.begin(), "history");
    return tester.run(more);
  }
  std::size_t countOf(std::vector<std::string> more) const {
    more.emplace_back("--json");
    return history(more).json().asArray()->size();
  }

  CommandTester tester;
};

TEST_F(HistoryCommand, failedFile_isToldTheSameEverywhere) {
  std::filesystem::remove(tester.folder / "phone/media/IMG_0001.MOV");
  const CommandResult run = tester.run({"transfer", "phone", "photos"});
  EXPECT_EQ(run.status, ExitStatus::someFailed);
  EXPECT_THAT(run.out, HasSubstr("Подробности: tavrix history "));
  EXPECT_THAT(history().out, HasSubstr("Не перенеслось: 1"));
  EXPECT_THAT(history({"--lang", "en"}).out, HasSubstr("Not transferred: 1"));

  const CommandResult failures = history({"last", "--outcome", "failed"});
  EXPECT_EQ(failures.status, ExitStatus::done);
  EXPECT_THAT(failures.out, AllOf(HasSubstr("IMG_0001.MOV"), HasSubstr("файла нет в источнике"),
                                  Not(HasSubstr("IMG_0003"))));
  const TransferRecord failed = record("last");
  EXPECT_EQ(failed.status, TransferRecord::Status::completedWithFailures);
  EXPECT_EQ(failed.totals, (TransferRecord::Totals{4, 3, 0, 1, 0, 60}));

  tester.folder.write("phone/media/IMG_0001.MOV", "0123456789");
  const TransferRecord mended = record(transfer());
  EXPECT_EQ(mended.status, TransferRecord::Status::completed);
  EXPECT_EQ(mended.totals, (TransferRecord::Totals{4, 1, 3, 0, 0, 10}));
  EXPECT_THAT(history({"last"}).out,
              AllOf(HasSubstr(isMac ? "Все снимки на Mac" : "Все снимки на компьютере"),
                    HasSubstr("уже были на месте")));
}

TEST_F(HistoryCommand, record_holdsPhonePlacesPathsAndSettings) {
  const TransferRecord run =
      record(transfer({"--device-name", "Маша", "--set", "fileNamePrefixMode=phone", "--set",
                       "liveOnlyPhoto=true", "--set", "uiMode=byDate"}));
  EXPECT_EQ(run.phoneName, "Маша");
  EXPECT_EQ(run.phoneHash, snapshotPhone("Маша").hash);
  EXPECT_EQ(run.destinationPath, std::filesystem::canonical(tester.folder / "photos").string());
  EXPECT_EQ(run.options.mode, "byDate");
  EXPECT_EQ(run.options.fileNamePrefix, "Маша ");
  EXPECT_EQ(run.options.templateName, "Дата — Город");
  ASSERT_FALSE(run.folders.empty());
  ASSERT_TRUE(run.folders[0].place);
  EXPECT_NEAR(run.folders[0].place->latitude, 41.9, 1e-6);
  EXPECT_TRUE(run.folders[0].place->names.empty());
  const TransferRecord::Shot& live = run.folders[0].shots.at(0);
  ASSERT_THAT(live.files, SizeIs(4));
  EXPECT_EQ(live.files[0].path, "2026-05-20/Маша IMG_0001.HEIC");
  EXPECT_EQ(live.files[1].state, TransferRecord::PartState::off);
  EXPECT_EQ(live.files[1].role, TransferRecord::Role::liveVideo);
  EXPECT_EQ(live.files[3].role, TransferRecord::Role::edit);
  EXPECT_EQ(live.outcome, TransferRecord::Outcome::onMac);

  const TransferRecord again =
      record(transfer({"--device-name", "Маша", "--set", "fileNamePrefixMode=phone"}));
  EXPECT_EQ(again.folders[0].shots[0].files[0].path, "2026-05-20/Маша IMG_0001.HEIC")
      << "what was there already has its path too";
}

TEST_F(HistoryCommand, recordsOptions_nameTheHomeAndTheTemplateAsThePersonDid) {
  const std::string yearAlone = R"({"tokens":[{"year":{"_0":"full"}}],"language":"system"})";
  ASSERT_EQ(tester.run({"presets", "save", "Мой год", yearAlone}).status, ExitStatus::done);
  std::vector<std::string> call{"--set", "uiMode=trips", "--set", "nameTemplate=" + yearAlone};
  EXPECT_EQ(record(transfer(call)).options.homeName, std::nullopt) << "places have no names";
  call.insert(call.end(), {"--set", "homeOverride=41.9,12.5", "--set", "homeOverrideName=Дача"});
  const TransferRecord::Options named = record(transfer(call)).options;
  EXPECT_EQ(named.homeName, "Дача");
  EXPECT_EQ(named.templateName, "Мой год");
}

TEST_F(HistoryCommand, skippedReducedCopies_areRecordedUnderTheirFolder) {
  tester.addPhone(R"([
    {"name":"IMG_1.HEIC","kind":"photo","size":10,"exifDate":"2026:05:20 12:00:00","exifOffset":"+00:00","cam":true,"px":640,"py":480},
    {"name":"IMG_E1.HEIC","kind":"photo","size":10,"exifDate":"2026:05:20 12:00:00","exifOffset":"+00:00"},
    {"name":"IMG_2.HEIC","kind":"photo","size":10,"exifDate":"2026:05:20 13:00:00","exifOffset":"+00:00"},
    {"name":"IMG_3.HEIC","kind":"photo","size":10,"exifDate":"2026:05:21 13:00:00","exifOffset":"+00:00","cam":true,"px":640,"py":480}])",
                  {"IMG_1.HEIC", "IMG_E1.HEIC", "IMG_2.HEIC", "IMG_3.HEIC"});
  for (const char* policy : {"both", "originalsOnly", "editedOnly"}) {
    const TransferRecord edited =
        record(transfer({"--set", "skipOptimized=true", "--set", "uiMode=byDate", "--set",
                         std::string{"editedPolicy="} + policy}));
    EXPECT_EQ(edited.totals.optimized, 2U) << policy;
    EXPECT_EQ(edited.totals.shots, 3U) << policy;
  }
  const TransferRecord run = record("last");
  EXPECT_EQ(run.totals.notReached(), 0U);
  for (const TransferRecord::Folder& folder : run.folders) {
    for (const TransferRecord::Shot& shot : folder.shots) {
      EXPECT_EQ(folder.name, dayText(TimeZone::utc().dateAt(*shot.captureDate))) << shot.name;
    }
  }
}

TEST_F(HistoryCommand, cancelledRun_isRecordedWithWhatItDidNotReach) {
  tester.isInterrupted = true;
  const CommandResult run = tester.run({"transfer", "phone", "photos", "--json"});
  EXPECT_EQ(run.status, ExitStatus::cancelled);
  const TransferRecord cancelled = record("last");
  EXPECT_EQ(cancelled.status, TransferRecord::Status::cancelled);
  EXPECT_EQ(cancelled.totals.notReached(), 4U);
  EXPECT_THAT(cancelled.notes, testing::ElementsAre("Перенос отменён."));
  EXPECT_THAT(history().out, HasSubstr("Перенос прерван"));
}

TEST_F(HistoryCommand, programThatIsKilled_leavesARecordThatSaysSo) {
  // A copy of the disk just before the first file is fetched.
  const std::string copy = tester.folder / "copy";
  const std::string records = "Tavrix/state/history";
  tester.atClock = [&](std::stop_source&) {
    if (!tester.folder.has("state/" + records) || tester.folder.has("copy")) return;
    std::filesystem::copy(tester.folder / "state", copy, std::filesystem::copy_options::recursive);
  };
  const std::string id = transfer();
  tester.atClock = {};
  const CommandResult shown = history({id, "--state", copy + "/Tavrix/state"});
  EXPECT_EQ(shown.status, ExitStatus::done) << shown.err;
  EXPECT_THAT(shown.out, AllOf(HasSubstr("Перенос прерван"), HasSubstr("до конца переноса")));
  EXPECT_EQ(record(id).status, TransferRecord::Status::completed);
  EXPECT_EQ(countOf({}), 1U);
}

TEST_F(HistoryCommand, list_isChosenFrom) {
  const std::string first = transfer();
  const std::string second = transfer({"--device-name", "Other"});
  const JsonValue runs = history({"--json"}).json();
  ASSERT_THAT(*runs.asArray(), SizeIs(2));
  EXPECT_EQ(*(*runs.asArray())[0].member("id")->asString(), second);
  for (const char* field : {"startedAt", "finishedAt", "status", "phoneName", "destinationPath"}) {
    EXPECT_NE((*runs.asArray())[0].member(field), nullptr) << field;
  }
  EXPECT_EQ(countOf({"--phone", "Other"}), 1U);
  EXPECT_EQ(countOf({"--dest", tester.folder / "photos"}), 2U);
  EXPECT_EQ(countOf({"--dest", tester.folder / "elsewhere"}), 0U);
  EXPECT_EQ(countOf({"--outcome", "failed"}), 0U);
  EXPECT_EQ(countOf({"--asset", "IMG_0004.PNG"}), 2U);
  const std::string path = tester.folder / "photos/2026-05-20/IMG_0001.HEIC";
  EXPECT_EQ(countOf({"--path", path}), 1U);
  EXPECT_EQ(countOf({"--path", path, "--phone", "Other"}), 0U);
  EXPECT_EQ(countOf({"--asset", "IMG_0004.PNG", "--outcome", "failed"}), 0U);
  EXPECT_EQ(record(first.substr(0, 8)).id.text(), first);

  EXPECT_EQ(history({first, "--delete"}).status, ExitStatus::done);
  EXPECT_EQ(countOf({}), 1U);
  EXPECT_EQ(history({first}).status, ExitStatus::usage);
  EXPECT_TRUE(tester.folder.has("photos/2026-05-20/IMG_0001.HEIC"));
}

TEST_F(HistoryCommand, wrongCalls_areRefusedWithASentence) {
  EXPECT_THAT(history().out, HasSubstr("Переносов ещё не было."));
  EXPECT_THAT(history({"last"}).err, HasSubstr("Переносов ещё не было."));
  EXPECT_FALSE(tester.folder.has("state")) << "looking creates nothing";
  transfer();
  const std::vector<std::vector<std::string>> calls{
      {"nonsense"}, {"ffffffffffff"},         {"last", "--outcome", "lost"},
      {"--delete"}, {"last", "--phone", "x"}, {"--path", "a", "--asset", "b"},
      {""},         {"last", "more"}};
  for (const auto& call : calls) {
    const CommandResult result = history(call);
    EXPECT_EQ(result.status, ExitStatus::usage) << testing::PrintToString(call);
    EXPECT_THAT(result.err, HasSubstr("tavrix: "));
    EXPECT_EQ(result.out, "");
  }
}

TEST_F(HistoryCommand, unwritableHistory_doesNotFailTheRun) {
  tester.folder.write("state", "a file where the folder should be");
  const CommandResult run = tester.run({"transfer", "phone", "photos", "--json"});
  EXPECT_EQ(run.status, ExitStatus::done);
  EXPECT_THAT(run.err, HasSubstr("в историю не попала"));
  EXPECT_EQ(run.json().member("recordID"), nullptr);
  EXPECT_TRUE(tester.folder.has("photos/2026-05-20/IMG_0001.HEIC"));
}

TEST(StateFolder, path_comesFromTheFirstThatTells) {
  const auto path = [](StateFolderChoice choice) { return stateFolderPath(choice).value_or("—"); };
  EXPECT_EQ(path({"a", "b", "/c", "/d"}), "a");
  EXPECT_EQ(path({std::nullopt, "b", "/c", "/d"}), "b");
  EXPECT_EQ(path({std::nullopt, std::nullopt, "/c", "/d"}), "/c/Tavrix/state");
  EXPECT_EQ(path({std::nullopt, std::nullopt, "relative", "/d"}), "/d/.local/state/Tavrix/state");
  EXPECT_EQ(path({std::nullopt, std::nullopt, "/c", "/d", true}), "/c/Tavrix/demo-state");
  EXPECT_EQ(path({}), "—");
}

}  // namespace
}  // namespace tavrix::cli
