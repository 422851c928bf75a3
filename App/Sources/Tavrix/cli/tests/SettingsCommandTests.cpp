#include "cli/printing/SettingDescription.h"
#include "cli/sentences/SettingMeanings.h"
#include "cli/tests/CommandTester.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class SettingsCommandTest : public testing::Test {
 protected:
  CommandResult settings(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "settings");
    return tester.run(std::move(arguments));
  }
  CommandResult presets(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "presets");
    return tester.run(std::move(arguments));
  }
  std::string stored() const { return tester.folder.read("config/Tavrix/defaults.json"); }
  void put(const std::string& text) const {
    tester.folder.write("config/Tavrix/defaults.json", text);
  }
  bool hasStored() const { return tester.folder.has("config/Tavrix/defaults.json"); }
  /// Returns the entry of a key in the JSON list.
  JsonValue listed(const std::string& key) const {
    const JsonValue list = settings({"--json"}).json();
    for (const JsonValue& entry : *list.asArray()) {
      if (*entry.member("key")->asString() == key) return entry;
    }
    throw std::invalid_argument{key};
  }
  bool isInitial(const std::string& key) const {
    return *listed(key).member("isInitial")->asBool();
  }

  CommandTester tester;
};

const std::string cityTemplate = R"({"tokens":[{"city":{"_0":"asIs"}}],"language":"english"})";

TEST_F(SettingsCommandTest, lookingAtThem_writesNothing) {
  EXPECT_THAT(settings({}).out, AllOf(HasSubstr("eventGapHours"), HasSubstr("исходная"),
                                      Not(HasSubstr("задана")), Not(HasSubstr("uiMode"))));
  EXPECT_THAT(presets({}).out,
              HasSubstr("Дата — Город (идёт с программой)\n  {year}-{month}-{day} — {city}\n"));
  EXPECT_FALSE(tester.folder.has("config"));
}

TEST_F(SettingsCommandTest, settingThatIsSet_isKeptUntilItIsReset) {
  struct Row {
    std::vector<std::string> arguments;
    std::string key;
    std::string value;
  };
  const std::vector<Row> rows{
      {{"eventGapHours", "2.5"}, "eventGapHours", "2.5"},
      {{"eventGapHours=2"}, "eventGapHours", "2"},
      {{"tripMinDays", "2"}, "tripMinDays", "2"},
      {{"splitByDistance=false"}, "splitByDistance", "false"},
      {{"homeOverride=-33.5,151.25"}, "homeOverride", R"({"latitude":-33.5,"longitude":151.25})"},
      {{"homeOverrideName", "Дача = дом"}, "homeOverrideName", R"("Дача = дом")"},
      {{"nameTemplate", cityTemplate}, "nameTemplate", cityTemplate},
      {{R"(nameOverrides={"a":"b=c"})"}, "nameOverrides", R"({"a":"b=c"})"},
      {{"mergesByMode", R"({"trips":[["a","b"]]})"}, "mergesByMode", R"({"trips":[["a","b"]]})"},
      {{"uiLanguage", "system"}, "uiLanguage", R"("system")"},
  };
  for (const Row& row : rows) {
    std::vector<std::string> arguments{"set"};
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    const CommandResult result = settings(arguments);
    EXPECT_EQ(result.status, ExitStatus::done) << row.key << result.err;
    EXPECT_FALSE(isInitial(row.key)) << row.key;
    EXPECT_EQ(*listed(row.key).member("value"), parseJson(row.value)) << row.key;
  }
  for (const Row& row : rows) {
    EXPECT_EQ(settings({"reset", row.key}).status, ExitStatus::done);
    EXPECT_TRUE(isInitial(row.key)) << row.key;
  }
  EXPECT_EQ(stored(), "{}\n");
}

TEST_F(SettingsCommandTest, list_tellsWhatWasSetInAFormThatCanBeSet) {
  settings({"set", "homeOverride=55.75,37.62"});
  settings({"set", "homeOverrideName", "Дача"});
  const std::string list = settings({"--lang", "en"}).out;
  EXPECT_THAT(list, HasSubstr("homeOverride         set      55.75,37.62\n"));
  EXPECT_THAT(list, HasSubstr("homeOverrideName     set      Дача\n"));
  EXPECT_THAT(list, HasSubstr("splitByDistance      initial  true\n"));
  EXPECT_THAT(settings({"set", "eventGapHours", "6", "--lang", "en"}).out,
              EndsWith("eventGapHours  set    6\n"));
}

TEST_F(SettingsCommandTest, resetOfAll_leavesTemplatesAndForeignKeys) {
  put(R"({"eventGapHours":1,"future":1,"manualHome":{"latitude":1,"longitude":2,"name":"a"},
          "savedPresets":[],"uiLanguage":"en"})");
  EXPECT_EQ(settings({"reset", "--all"}).status, ExitStatus::done);
  EXPECT_EQ(stored(), "{\n  \"future\": 1,\n  \"savedPresets\": []\n}\n");
}

TEST_F(SettingsCommandTest, resetOfTheHome_takesItsNameAlong) {
  settings({"set", "homeOverride=1,2"});
  settings({"set", "homeOverrideName=Дача"});
  settings({"reset", "homeOverrideName"});
  EXPECT_FALSE(isInitial("homeOverride"));
  EXPECT_TRUE(isInitial("homeOverrideName"));
  settings({"set", "homeOverrideName=Дача"});
  settings({"reset", "homeOverride"});
  EXPECT_TRUE(isInitial("homeOverrideName"));
}

TEST_F(SettingsCommandTest, wrongCall_isOneSentenceAndKeepsNothing) {
  struct Row {
    std::vector<std::string> arguments;
    std::string sentence;
  };
  const std::vector<Row> rows{
      {{"set", "uiMode", "trips"}, "не запоминается, она действует на один вызов: --set uiMode="},
      {{"set", "packAsZip=true"}, "не запоминается"},
      {{"set", "periodFrom"}, "не запоминается"},
      {{"set", "colour=red"}, "Настройки «colour» нет; запоминаются: skipOptimized,"},
      {{"set", "manualHome={}"}, "Настройки «manualHome» нет"},
      {{"set", "eventGapHours"}, "Не указано значение настройки «eventGapHours»"},
      {{"set", "eventGapHours", "-1"}, "«eventGapHours» не принимает значение «-1»"},
      {{"set", "tripMinDays=2.5"}, "целое число от 0 до 10000"},
      {{"set", "nameTemplate", "{}"}, "нет поля «tokens»"},
      {{"set", "uiLanguage=french"}, "можно: ru, en, system"},
      {{"set", "homeOverrideName=Дача"}, "сначала укажите его"},
      {{"set", "savedPresets=[]"}, "tavrix presets save"},
      {{"set"}, "Не хватает KEY"},
      {{"reset"}, "Укажите настройку, которую нужно сбросить, или --all"},
      {{"reset", "eventGapHours", "--all"}, "оставьте что-то одно"},
      {{"reset", "uiMode"}, "не запоминается"},
      {{"reset", "colour"}, "Настройки «colour» нет"},
      {{"forget"}, "Лишний параметр «forget»"},
  };
  for (const Row& row : rows) {
    const CommandResult result = settings(row.arguments);
    EXPECT_EQ(result.status, ExitStatus::usage) << row.sentence;
    EXPECT_THAT(result.err, AllOf(StartsWith("tavrix: "), HasSubstr(row.sentence)));
    EXPECT_THAT(result.out, IsEmpty());
  }
  EXPECT_FALSE(tester.folder.has("config"));
}

TEST_F(SettingsCommandTest, runBySettings_givesThePlanOfARunBySet) {
  tester.addPhone(smallSnapshot, smallMedia);
  const auto plan = [&](const std::vector<std::string>& assignments) {
    std::vector<std::string> arguments{"plan", "phone", "photos", "--json"};
    for (const std::string& assignment : assignments) {
      arguments.insert(arguments.end(), {"--set", assignment});
    }
    const CommandResult result = tester.run(arguments);
    EXPECT_EQ(result.status, ExitStatus::done) << result.err;
    return result.out;
  };
  const std::string initial = plan({});
  const std::vector<std::string> assignments{
      "eventGapHours=100",
      R"(nameTemplate={"tokens":[{"day":{"_0":"pad2"}},{"literal":{"_0":"x"}}],"language":"english"})",
      R"(nameOverrides={"event-2026-05-20":"Picnic"})",
      R"(mergesByMode={"events":[["event-2026-05-20","event-2026-05-21"]]})",
  };
  for (const std::string& assignment : assignments) {
    const std::string bySet = plan({assignment});
    EXPECT_NE(bySet, initial) << assignment;
    settings({"set", assignment});
    EXPECT_EQ(plan({}), bySet) << assignment;
    settings({"reset", "--all"});
    EXPECT_EQ(plan({}), initial);
  }
  for (const std::string& assignment : assignments) settings({"set", assignment});
  EXPECT_EQ(plan({}), plan(assignments));
  // The settings of the call override the stored ones.
  const std::string year =
      R"(nameTemplate={"tokens":[{"year":{"_0":"full"}}],"language":"system"})";
  const std::string overridden =
      plan({"eventGapHours=4", "nameOverrides={}", "mergesByMode={}", year});
  settings({"reset", "--all"});
  EXPECT_EQ(overridden, plan({year}));
}

TEST_F(SettingsCommandTest, keptLanguage_countsWhereNoneIsNamed) {
  struct Row {
    std::string defaults;
    std::string locale;
    std::vector<std::string> arguments;
    std::string title;
  };
  const std::vector<Row> rows{
      {"{}", "en_US", {}, "Setting"},
      {"{}", "ru_RU", {}, "Настройка"},
      {R"({"uiLanguage":"en"})", "ru_RU", {}, "Setting"},
      {R"({"uiLanguage":"en"})", "ru_RU", {"--lang", "ru"}, "Настройка"},
      {R"({"uiLanguage":"system"})", "en_US", {}, "Setting"},
      {R"({"uiLanguage":"system"})", "ru_RU", {}, "Настройка"},
      {R"({"uiLanguage":"french"})", "en_US", {}, "Setting"},
      {R"({"uiLanguage":1})", "ru_RU", {}, "Настройка"},
  };
  for (const Row& row : rows) {
    put(row.defaults);
    tester.messagesLocaleID = row.locale;
    EXPECT_THAT(settings(row.arguments).out, StartsWith(row.title)) << row.defaults;
  }
  put(R"({"uiLanguage":"en"})");
  EXPECT_THAT(tester.run({"copy"}).err, HasSubstr("There is no command “copy”"));
}

TEST_F(SettingsCommandTest, demo_changesNothing) {
  const std::string before = R"({"eventGapHours":1})";
  put(before);
  tester.environment.emplace("DEMO_DIR", tester.folder / "phone");
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"settings", "set", "eventGapHours", "9"},
        {"settings", "reset", "--all"},
        {"presets", "save", "a", cityTemplate}}) {
    const CommandResult result = tester.run(arguments);
    EXPECT_EQ(result.status, ExitStatus::stopped);
    EXPECT_THAT(result.err, HasSubstr("DEMO_DIR"));
  }
  EXPECT_EQ(stored(), before);
  EXPECT_EQ(listed("eventGapHours").member("value")->asNumber(), 1);
  tester.environment.emplace("DEMO_STATE_DIR", tester.folder / "demo");
  EXPECT_EQ(listed("eventGapHours").member("value")->asNumber(), 4) << "its own, not the person's";
}

TEST_F(SettingsCommandTest, damagedFile_isToldByEveryCommandAndKeptByAChange) {
  const std::string damaged = "{\"eventGapHours\": 1,\n oops";
  put(damaged);
  const CommandResult list = settings({"--lang", "en"});
  EXPECT_EQ(list.status, ExitStatus::done);
  EXPECT_THAT(list.err, AllOf(HasSubstr("defaults.json” is damaged, line 2, column 2")));
  EXPECT_THAT(list.out, Not(HasSubstr(" set ")));
  EXPECT_EQ(stored(), damaged);
  const CommandResult change = settings({"set", "eventGapHours=3", "--lang", "en"});
  EXPECT_EQ(change.status, ExitStatus::done);
  EXPECT_THAT(change.err,
              HasSubstr("was kept as “" + tester.folder / "config/Tavrix/defaults.json.damaged"));
  EXPECT_EQ(tester.folder.read("config/Tavrix/defaults.json.damaged"), damaged);
  EXPECT_THAT(settings({}).err, IsEmpty());
  EXPECT_EQ(listed("eventGapHours").member("value")->asNumber(), 3);
}

TEST_F(SettingsCommandTest, changeThatIsNotStored_isAFailure) {
  tester.folder.write("config", "no folder");
  const CommandResult result = settings({"set", "eventGapHours=3"});
  EXPECT_EQ(result.status, ExitStatus::stopped);
  EXPECT_THAT(result.err, HasSubstr("Настройки не сохранились: «"));
  EXPECT_THAT(result.out, IsEmpty());
  std::filesystem::remove(tester.folder / "config");
  tester.environment = {{"XDG_CONFIG_HOME", ""}};
  EXPECT_THAT(settings({"set", "eventGapHours=3"}).err, HasSubstr("HOME или XDG_CONFIG_HOME"));
  EXPECT_EQ(settings({}).status, ExitStatus::done);
}

TEST_F(SettingsCommandTest, launch_removesWhatBeginsAfresh) {
  put(R"({"eventGapHours":1,"packAsZip":1,"mergeDistricts":1})");
  EXPECT_EQ(tester.run({"template", "presets"}).status, ExitStatus::done);
  EXPECT_EQ(stored(), "{\n  \"eventGapHours\": 1\n}\n");
}

TEST_F(SettingsCommandTest, templates_areSavedReplacedAndDeleted) {
  EXPECT_EQ(presets({"save", " Город ", cityTemplate}).status, ExitStatus::done);
  EXPECT_EQ(
      presets({"save", "Год", R"({"tokens":[{"year":{"_0":"full"}}],"language":"system"})"}).status,
      ExitStatus::done);
  EXPECT_EQ(presets({"save", "Город", R"({"tokens":[],"language":"system"})"}).status,
            ExitStatus::done);
  const auto saved = [&] { return *presets({"--json"}).json().member("saved")->asArray(); };
  ASSERT_EQ(saved().size(), 2U);
  EXPECT_EQ(saved()[0],
            parseJson(R"({"name":"Город","template":{"tokens":[],"language":"system"}})"));
  EXPECT_THAT(presets({}).out, EndsWith("Год (сохранённый)\n  {year}\n  например: 2026\n"));
  EXPECT_EQ(presets({"delete", "Город"}).out, "Шаблон «Город» удалён.\n");
  ASSERT_EQ(saved().size(), 1U);
  EXPECT_EQ(presets({"--json"}).json().member("builtin")->asArray()->size(), 5U);
}

TEST_F(SettingsCommandTest, wrongTemplates_areRefused) {
  struct Row {
    std::vector<std::string> arguments;
    std::string sentence;
  };
  const std::vector<Row> rows{
      {{"save", " ", cityTemplate}, "должно быть название"},
      {{"save", "Дата — Город", cityTemplate}, "идёт с программой"},
      {{"save", "month in WORDS", cityTemplate}, "идёт с программой"},
      {{"save", "a", "{\""}, "это не JSON"},
      {{"save", "a", "{yaer}"}, "в столбце 2 неизвестный блок «yaer» (может быть, year?)"},
      {{"save", "a"}, "Не хватает TEMPLATE"},
      {{"delete", "a"}, "Сохранённого шаблона «a» нет"},
      {{"delete", "Date — city"}, "удалить его нельзя"},
  };
  for (const Row& row : rows) {
    const CommandResult result = presets(row.arguments);
    EXPECT_EQ(result.status, ExitStatus::usage) << row.sentence;
    EXPECT_THAT(result.err, HasSubstr(row.sentence));
  }
  EXPECT_FALSE(hasStored());
}

TEST_F(SettingsCommandTest, templatesThatDoNotRead_areNotWrittenOver) {
  const std::string before = R"({"savedPresets":[{"name":"a","template":{"later":1}}]})";
  put(before);
  EXPECT_EQ(presets({"save", "b", cityTemplate}).status, ExitStatus::stopped);
  EXPECT_EQ(stored(), before);
  EXPECT_EQ(settings({"reset", "savedPresets"}).status, ExitStatus::done);
  EXPECT_EQ(presets({"save", "b", cityTemplate}).status, ExitStatus::done);
}

TEST_F(SettingsCommandTest, savedTemplate_isPrintedAsTheWholeListForPrograms) {
  presets({"save", "a", cityTemplate});
  EXPECT_THAT(presets({"save", "b", cityTemplate}).out, StartsWith("b (сохранённый)\n"));
  EXPECT_EQ(presets({"save", "b", cityTemplate, "--json"}).out, presets({"--json"}).out);
  const std::string reset = settings({"reset", "savedPresets", "--json"}).out;
  EXPECT_EQ(reset, presets({"--json"}).out);
}

TEST_F(SettingsCommandTest, everySetting_isExplainedInBothLanguages) {
  const JsonValue all = settings({"--all", "--json"}).json();
  std::vector<std::string_view> keys = settingKeys();
  keys.emplace_back("uiLanguage");
  ASSERT_EQ(all.asArray()->size(), keys.size());
  EXPECT_EQ(sentences::settingMeanings.size(), keys.size()) << "a meaning without a setting";
  const std::string table = settings({"--all"}).out;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const JsonValue& setting = (*all.asArray())[i];
    EXPECT_EQ(*setting.member("key")->asString(), keys[i]);
    for (const char* language : {"en", "ru"}) {
      EXPECT_THAT(*setting.member("meaning")->member(language)->asString(), Not(IsEmpty()))
          << keys[i];
    }
    EXPECT_THAT(table, HasSubstr('\n' + std::string{keys[i]} + ' '));
  }
}

TEST_F(SettingsCommandTest, initialValue_isTheOneThatAppliesAndChangesNothing) {
  const Settings initial = tavrix::initialSettings(TimeZone::utc(), "en_US");
  const JsonValue all = settings({"--all", "--json"}).json();
  for (const JsonValue& setting : *all.asArray()) {
    const std::string key = *setting.member("key")->asString();
    if (*setting.member("kept")->asBool()) {
      const JsonValue kept = listed(key);
      const JsonValue* const value = kept.member("value");
      const JsonValue* const shown = setting.member("initial");
      EXPECT_EQ(value == nullptr, shown == nullptr) << key;
      EXPECT_TRUE(value == nullptr || shown == nullptr || *value == *shown) << key;
    }
    if (setting.member("initial") == nullptr || key == "uiLanguage") continue;
    const std::string text = settingValueText(key, *setting.member("initial"));
    const auto same = withSetting(initial, key + "=" + (text == "—" ? "" : text));
    ASSERT_TRUE(std::holds_alternative<Settings>(same)) << key;
    EXPECT_EQ(std::get<Settings>(same), initial) << key;
  }
}

}  // namespace
}  // namespace tavrix::cli
