#include "cli/tests/CommandTester.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class SettingWarningsTest : public testing::Test {
 protected:
  SettingWarningsTest() { tester.addPhone(smallSnapshot, smallMedia); }

  CommandResult run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--lang", "en"});
    return tester.run(std::move(arguments));
  }
  void putDefaults(const std::string& text) const {
    tester.folder.write("config/Tavrix/defaults.json", text);
  }

  CommandTester tester;
};

TEST_F(SettingWarningsTest, settingsWithoutEffect_areToldByGroupsPlanAndTransfer) {
  const std::vector<std::string> more{"--set", "granularity=month",
                                      "--set", "jpegQuality=1",
                                      "--set", "nameByGroupID=true",
                                      "--set", "datelessName=a",
                                      "--set", R"(nameOverrides={"event-x":"a"})",
                                      "--set", R"(mergesByMode={"trips":[["a","b"]]})"};
  for (std::vector<std::string> call : {std::vector<std::string>{"groups", "phone"},
                                        {"plan", "phone", "photos"},
                                        {"transfer", "phone", "photos"}}) {
    call.insert(call.end(), more.begin(), more.end());
    const CommandResult result = run(call);
    EXPECT_EQ(result.status, ExitStatus::done);
    EXPECT_EQ(result.err,
              "tavrix: The setting granularity has no effect: it applies only together with "
              "uiMode=byDate.\n"
              "tavrix: The setting jpegQuality has no effect: it applies only together with "
              "photoJPEG=true.\n"
              "tavrix: The setting datelessName has no effect: nameByGroupID=true takes its "
              "place.\n"
              "tavrix: nameOverrides has ids that no folder has: event-x; tavrix groups --json "
              "prints all ids.\n"
              "tavrix: The setting mergesByMode has no effect: it has nothing for events, the mode "
              "of this call.\n")
        << call.front();
  }
  run({"settings", "set", "tripMinDays=3"});
  EXPECT_THAT(run({"groups", "phone"}).err, IsEmpty()) << "only settings of the call";
}

TEST_F(SettingWarningsTest, periodThatEndsBeforeItBegins_isAnError) {
  const CommandResult result =
      run({"groups", "phone", "--set", "periodTo=2026-05-20", "--set", "periodFrom=2026-05-21"});
  EXPECT_EQ(result.status, ExitStatus::usage);
  EXPECT_THAT(result.err,
              AllOf(HasSubstr("periodFrom=2026-05-21"), HasSubstr("periodTo=2026-05-20")));
  EXPECT_EQ(
      run({"groups", "phone", "--set", "periodTo=2026-05-20", "--set", "periodFrom=2026-05-20"})
          .status,
      ExitStatus::done);
}

TEST_F(SettingWarningsTest, unknownTimeZoneOfTheEnvironment_isToldWithTheOneThatIsUsed) {
  tester.environment["TZ"] = "Mars/Olympus";
  EXPECT_THAT(run({"groups", "phone"}).err, HasSubstr("“Mars/Olympus”; UTC is used instead."));
  EXPECT_THAT(run({"groups", "phone", "--set", "timeZoneID=Europe/Rome"}).err, IsEmpty());
  tester.environment["TZ"] = ":Europe/Rome";
  EXPECT_THAT(run({"groups", "phone"}).err, IsEmpty());
}

TEST_F(SettingWarningsTest, wrongValuesInTheSettingsFile_areToldWithWhatIsAllowed) {
  putDefaults(
      "\xEF\xBB\xBF"
      R"({"eventGapHours":-1,"tripMinDays":10001,"eventGapKm":5,
                "manualHome":{"latitude":91,"longitude":0},"savedPresets":7,"uiLanguage":"fr"})");
  const CommandResult result = run({"settings", "--json"});
  EXPECT_EQ(result.status, ExitStatus::done);
  const std::string file = "file “" + tester.folder / "config/Tavrix/defaults.json" + "” ";
  for (const std::string text :
       {"eventGapHours, “-1”; the initial value applies. Allowed: a number of at least 0",
        "tripMinDays, “10001”; the initial value applies. Allowed: a whole number from 0 to 10000",
        "manualHome, “{\"latitude\":91,\"longitude\":0}”", "savedPresets, “7”",
        "uiLanguage, “\"fr\"”; the initial value applies. Allowed: ru, en, system"}) {
    EXPECT_THAT(result.err, HasSubstr(file + "has a wrong value for " + text));
  }
  EXPECT_THAT(result.err, Not(HasSubstr("eventGapKm")));
}

TEST_F(SettingWarningsTest, folderInPlaceOfTheSettingsFile_isToldAsSuch) {
  const std::string file = tester.folder / "config/Tavrix/defaults.json";
  std::filesystem::create_directories(file);
  const CommandResult asFolder = run({"settings", "set", "eventGapHours=3"});
  EXPECT_EQ(asFolder.status, ExitStatus::stopped);
  EXPECT_THAT(asFolder.err,
              AllOf(HasSubstr("“" + file + "” is a folder, not a settings file: the initial"),
                    HasSubstr("The settings were not saved: “" + file + "” is a folder")));
  std::filesystem::remove(file);
  std::filesystem::create_symlink(tester.folder.path(), file);
  EXPECT_THAT(run({"settings"}).err,
              HasSubstr("is a link to the folder “" + tester.folder.path() + "”"));
  std::filesystem::remove(file);
  std::filesystem::create_symlink("defaults.json", file);
  EXPECT_THAT(run({"settings"}).err, HasSubstr("is a link that leads back to itself"));
}

TEST_F(SettingWarningsTest, byteOrderMarkBeforeASnapshot_isPassedOver) {
  const std::string plain = run({"catalog", "phone", "--json"}).out;
  tester.addPhone("\xEF\xBB\xBF" + smallSnapshot);
  EXPECT_EQ(run({"catalog", "phone", "--json"}).out, plain);
}

}  // namespace
}  // namespace tavrix::cli
