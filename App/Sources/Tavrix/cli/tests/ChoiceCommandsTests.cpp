#include "cli/tests/CommandTester.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Words = std::vector<std::string>;

/// The calls are made on 2026-05-21 at noon.
struct ChoiceCommands : testing::Test {
  ChoiceCommands() { tester.addPhone(smallSnapshot, smallMedia); }

  CommandResult call(const std::string& command, const Words& options) const {
    Words words{command, "phone"};
    if (command != "groups") words.emplace_back("photos");
    words.insert(words.end(), options.begin(), options.end());
    return tester.run(words);
  }

  /// Returns the paths of a plan, after checking that `groups` and the accounts agree with it.
  Words paths(const Words& options) const {
    Words withJson = options;
    withJson.emplace_back("--json");
    const CommandResult result = call("plan", withJson);
    EXPECT_EQ(result.status, ExitStatus::done) << result.err;
    const JsonValue plan = result.json();
    Words paths;
    for (const JsonValue& file : *plan.member("files")->asArray()) {
      paths.push_back(*file.member("relativePath")->asString());
    }
    const std::size_t known = plan.member("skippedKnown")->asArray()->size();
    // One file of the catalogue is a sidecar without its picture.
    EXPECT_EQ(
        static_cast<double>(paths.size() + known) + *plan.member("leftOutByChoice")->asNumber() + 1,
        8);
    std::size_t grouped = 0;
    const JsonValue groups = call("groups", withJson).json();
    for (const JsonValue& group : *groups.member("groups")->asArray()) {
      grouped += group.member("assets")->asArray()->size();
    }
    EXPECT_EQ(grouped, paths.size() + known);
    EXPECT_EQ(*groups.member("leftOutByChoice"), *plan.member("leftOutByChoice"));
    return paths;
  }

  CommandTester tester;
};

const Words live{"2026-05-20/IMG_0001.HEIC", "2026-05-20/IMG_0001.MOV", "2026-05-20/IMG_0001.AAE",
                 "2026-05-20/IMG_E0001.HEIC"};
const Words nextDay{"2026-05-21/IMG_0002.JPG", "2026-05-21/IMG_0003.MOV"};
const Words undated{"No date/IMG_0004.PNG"};

Words joined(Words first, const Words& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

TEST_F(ChoiceCommands, eachOption_choosesWhatItNames) {
  struct Row {
    Words options;
    Words expected;
  };
  const std::vector<Row> rows{
      {{"--only", "event-2026-05-20"}, live},
      {{"--only", "NO DATE", "--only", "2026-05-21"}, joined(nextDay, undated)},
      {{"--last", "1d"}, nextDay},
      {{"--last", "2d"}, joined(live, nextDay)},
      {{"--last", "1d", "--set", "timeZoneID=Pacific/Kiritimati"},
       {"2026-05-22/IMG_0002.JPG", "2026-05-22/IMG_0003.MOV"}},
      {{"--last", "1d", "--only", "event-2026-05-20"}, {}},
      {{"--exclude", "*.AAE", "--exclude", "100APPLE/*.mov", "--exclude", "[I]MG_000[34].*"},
       {live[0], live[3], nextDay[0]}},
      // The picture itself is excluded, and with it the whole shot.
      {{"--exclude", "IMG_0001.HEIC"}, joined(nextDay, undated)},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(paths(row.options), row.expected) << testing::PrintToString(row.options);
  }
  // A period in the settings holds as well.
  EXPECT_THAT(call("plan", {"--last", "1d", "--set", "periodTo=2026-05-20"}).out,
              AllOf(HasSubstr("  пропущены по настройкам               3\n"),
                    HasSubstr("  пропущены по выбору                   4\n"),
                    HasSubstr("  к переносу                            0\n")));
}

TEST_F(ChoiceCommands, last_countsCalendarDaysBackFromToday) {
  const std::string entry =
      R"({"name":"A.JPG","kind":"photo","size":10,"exifOffset":"+00:00","exifDate":")";
  struct Row {
    std::string now;
    std::string last;
    std::string firstDay;
    std::string dayBefore;
  };
  const std::vector<Row> rows{
      {"2026-05-21T23:59:00Z", "7d", "2026:05:15", "2026:05:14"},
      {"2026-05-21T00:00:00Z", "1w", "2026:05:15", "2026:05:14"},
      {"2026-05-21T12:00:00Z", "2m", "2026:03:22", "2026:03:21"},
      {"2026-03-31T12:00:00Z", "1m", "2026:03:01", "2026:02:28"},
      {"2026-01-15T12:00:00Z", "1m", "2025:12:16", "2025:12:15"},
  };
  for (const Row& row : rows) {
    tester.time = *parseIso8601(row.now);
    for (const std::string& day : {row.firstDay, row.dayBefore}) {
      tester.addPhone("[" + entry + day + R"( 00:00:00"}])");
      const JsonValue groups = call("groups", {"--last", row.last, "--json"}).json();
      EXPECT_EQ(groups.member("groups")->asArray()->size(), day == row.firstDay ? 1U : 0U)
          << row.last << " " << day;
    }
  }
}

TEST_F(ChoiceCommands, mistakes_areUsageErrorsBeforeAnythingIsWritten) {
  struct Row {
    Words options;
    std::string sentence;
  };
  const std::vector<Row> rows{
      {{"--only", "2026-05-21", "--only", "event-2026-05-02"}, "Did you mean “event-2026-05-20”?"},
      {{"--only", "date"}, "Did you mean “no-date”?"},
      {{"--only", ""}, "There is no folder “”"},
      {{"--only", "Zanzibar"}, "There is no folder “Zanzibar”"},
      {{"--exclude", ""}, "--exclude is followed by an empty text"},
      {{"--last", "0d"}, "“0d” is no time"},
      {{"--last", "7"}, "“7” is no time"},
      {{"--last", "-7d"}, "“-7d” is no time"},
      {{"--last", "7days"}, "“7days” is no time"},
      {{"--last", "99999999999d"}, "is no time"},
  };
  for (const Row& row : rows) {
    Words options = row.options;
    options.insert(options.end(), {"--lang", "en"});
    for (const std::string command : {"groups", "plan", "transfer"}) {
      const CommandResult result = call(command, options);
      EXPECT_EQ(result.status, ExitStatus::usage) << command << testing::PrintToString(options);
      EXPECT_THAT(result.err, HasSubstr(row.sentence));
      EXPECT_THAT(result.out, IsEmpty());
    }
  }
  EXPECT_FALSE(tester.folder.has("photos"));
}

TEST_F(ChoiceCommands, namesAndPaths_areThoseOfTheWholeLibrary) {
  // Two shots of one name in one folder, and a second folder of the same name.
  const auto entry = [](const std::string& folder, const std::string& time) {
    return R"({"name":"IMG_0001.JPG","dir":")" + folder +
           R"(","kind":"photo","size":10,"exifDate":"2026:05:)" + time + R"(:00:00"})";
  };
  tester.addPhone("[" + entry("100APPLE", "20 01") + "," + entry("101APPLE", "20 02") + "," +
                      entry("102APPLE", "20 20") + "]",
                  {"IMG_0001.JPG"});
  const auto planned = [&](const Words& options) {
    Words words = options;
    words.emplace_back("--json");
    const JsonValue plan = call("plan", words).json();
    const auto& files = *plan.member("files")->asArray();
    return files.size() == 1 ? *files[0].member("relativePath")->asString() : "";
  };
  EXPECT_EQ(planned({"--exclude", "100APPLE/*", "--only", "event-2026-05-20"}),
            "2026-05-20/IMG_0001 (2).JPG");
  EXPECT_EQ(planned({"--only", "2026-05-20 (2)"}), "2026-05-20 (2)/IMG_0001.JPG");
  EXPECT_EQ(planned({"--set", "uiMode=flat", "--exclude", "*/100APPLE/*", "--exclude", "101*/*"}),
            "IMG_0001 (3).JPG");
}

TEST_F(ChoiceCommands, sinceLast_leavesOutWhatFinishedRunsRecorded) {
  const CommandResult first = call("plan", {"--since-last", "--lang", "en"});
  EXPECT_THAT(first.err, HasSubstr("No transfer from this phone has finished yet"));
  EXPECT_THAT(first.out, Not(HasSubstr("by the choice")));

  // A cancelled run is not finished, whatever it copied.
  tester.isInterrupted = true;
  EXPECT_EQ(call("transfer", {}).status, ExitStatus::cancelled);
  tester.isInterrupted = false;
  EXPECT_EQ(paths({"--since-last"}), joined(joined(live, nextDay), undated));

  // A run that failed on one file has recorded the others.
  std::filesystem::remove(tester.folder / "phone/media/IMG_0003.MOV");
  tester.time += std::chrono::minutes{1};
  EXPECT_EQ(call("transfer", {"--only", "2026-05-20", "--only", "2026-05-21"}).status,
            ExitStatus::someFailed);
  std::filesystem::remove_all(tester.folder / "photos");
  EXPECT_EQ(paths({"--since-last"}), (Words{nextDay[1], undated[0]}));
  EXPECT_THAT(call("plan", {"--since-last"}).err, IsEmpty());
  EXPECT_EQ(paths({"--since-last", "--device-name", "Another"}).size(), 7U);

  // A new edit makes the shot new; another picture of an old name is new.
  tester.addPhone(
      R"([{"name":"IMG_0001.HEIC","dir":"100APPLE","kind":"photo","size":10,"exifDate":"2026:05:20 12:00:00","exifOffset":"+00:00"},
          {"name":"IMG_0001.AAE","dir":"100APPLE","kind":"sidecar","size":11},
          {"name":"IMG_0002.JPG","dir":"100APPLE","kind":"photo","size":10,"exifDate":"2026:05:21 11:00:00","exifOffset":"+00:00"}])");
  const JsonValue again = call("plan", {"--since-last", "--json"}).json();
  EXPECT_EQ(again.member("files")->asArray()->size(), 3U);
}

TEST_F(ChoiceCommands, transfer_writesThePartAndSaysWhatWasLeftOut) {
  const CommandResult part = call(
      "transfer", {"--last", "2d", "--exclude", "*.MOV", "--exclude", "*.XYZ", "--lang", "en"});
  EXPECT_EQ(part.status, ExitStatus::done);
  EXPECT_THAT(part.err, HasSubstr("No file matches --exclude “*.XYZ”."));
  EXPECT_THAT(part.out, AllOf(HasSubstr("In the catalogue                              8\n"),
                              HasSubstr("  left out by the choice                      3\n"),
                              HasSubstr("  to transfer                                 4\n"),
                              HasSubstr("    copied                                    4\n")));
  EXPECT_TRUE(tester.folder.has("photos/2026-05-20/IMG_E0001.HEIC"));
  EXPECT_FALSE(tester.folder.has("photos/2026-05-20/IMG_0001.MOV"));
  EXPECT_FALSE(tester.folder.has("photos/No date"));
  // The record has the chosen shots; an excluded file of theirs was off.
  const JsonValue record = tester.run({"history", "last", "--json"}).json();
  EXPECT_EQ(*record.member("totals")->member("shots")->asNumber(), 2);
  EXPECT_THAT(tester.run({"history", "last", "--json"}).out, HasSubstr(R"("state": "off")"));

  EXPECT_THAT(call("transfer", {"--exclude", "*"}).out,
              HasSubstr("Переносить нечего: под выбор не подходит ни один снимок."));
  EXPECT_THAT(call("groups", {"--exclude", "*"}).out,
              HasSubstr("Под выбор не подходит ни один снимок."));
  EXPECT_THAT(call("transfer", {}).out, HasSubstr("    скопированы                         3\n"));
}

TEST_F(ChoiceCommands, record_hasNoReducedCopiesOutsideTheChoice) {
  const auto optimized = [&](const Words& options) {
    tester.time += std::chrono::minutes{1};
    Words words = options;
    words.insert(words.end(), {"--set", "skipOptimized=true"});
    call("transfer", words);
    const JsonValue record = tester.run({"history", "last", "--json"}).json();
    return *record.member("totals")->member("optimized")->asNumber();
  };
  EXPECT_EQ(optimized({"--only", "2026-05-20"}), 0);
  EXPECT_EQ(optimized({"--exclude", "IMG_0002.JPG"}), 0);
  EXPECT_EQ(optimized({"--last", "1d"}), 1);
}

TEST_F(ChoiceCommands, explanation_isThatOfTheChosenFolders) {
  const std::string moscow = R"(,"lat":55.75,"lon":37.62})";
  const auto entry = [](const std::string& name, const std::string& time) {
    return R"({"name":")" + name + R"(.JPG","kind":"photo","size":10,"exifDate":"2026:)" + time +
           R"( 12:00:00")";
  };
  tester.addPhone("[" + entry("H1", "04:01") + moscow + "," + entry("H2", "04:02") + moscow + "," +
                  entry("H3", "04:03") + moscow + "," + entry("M", "04:04") + "}," +
                  entry("R1", "05:10") + R"(,"lat":41.9,"lon":12.5},)" + entry("R2", "05:11") +
                  R"(,"lat":41.9,"lon":12.5}])");
  const Words trips{"--set", "uiMode=trips", "--explain=all", "--lang",
                    "en",    "--exclude",    "H1.JPG"};
  const std::string all = call("groups", trips).out;
  EXPECT_THAT(all, AllOf(HasSubstr("H2.JPG  2026-04-02 12:00:00  not away from home"),
                         HasSubstr("M.JPG   2026-04-04 12:00:00  the shot has no place"),
                         HasSubstr("trip “2026-05-10”"), Not(HasSubstr("H1.JPG"))));
  EXPECT_THAT(call("groups", joined(trips, {"--only", "month-2026-04"})).out,
              AllOf(HasSubstr("M.JPG"), Not(HasSubstr("trip “"))));
  const std::string json =
      call("groups", joined(trips, {"--json", "--only", "trip-2026-05-10"})).out;
  EXPECT_THAT(json, AllOf(HasSubstr(R"("months": [])"), HasSubstr("trip-2026-05-10")));
}

}  // namespace
}  // namespace tavrix::cli
