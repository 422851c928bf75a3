// The initial state of a model, and its state that outlives the program.

#include "foundation/json/JsonValue.h"
#include "model/tests/support/ModelHarness.h"
#include "settings/defaults/FileDefaults.h"
#include "settings/defaults/MemoryDefaults.h"

namespace tavrix {
namespace {

struct AppModelLaunchTest : testing::Test, ModelHarness {
  void change(const std::function<void(Settings&)>& edit) {
    Settings settings = *state().settings;
    edit(settings);
    model->changeSettings(std::move(settings));
  }
  void launchWith(UserDefaults& kept) {
    defaults = &kept;
    launch();
  }
};

TEST_F(AppModelLaunchTest, settingsOfWrongTypes_leaveInitialValuesAndTheRest) {
  MemoryDefaults kept{*parseJson(R"({"eventGapHours":"four","tripMinDays":1e300,"nameTemplate":[],
      "mergesByMode":"x","savedPresets":[1],"eventGapKm":12.5,"packAsZip":1})")
                           .asObject()};
  launchWith(kept);
  Settings expected = initial;
  expected.gathering.eventGapKm = 12.5;
  EXPECT_EQ(*state().settings, expected);
  EXPECT_TRUE(state().savedPresets->empty());
  EXPECT_EQ(kept.object("packAsZip"), std::nullopt) << "never carried over";
}

TEST_F(AppModelLaunchTest, choices_areWrittenAsideAndBackAfterARestart) {
  MemoryDefaults kept;
  launchWith(kept);
  change([](Settings& settings) { settings.gathering.eventGapHours = 7; });
  change([](Settings& settings) { settings.layout.photoJPEG = true; });
  model->changeSavedPresets({{"Мой", NameTemplate{}}});
  EXPECT_EQ(kept.object("eventGapHours"), std::nullopt) << "the loop waits for no disk";
  settle();
  EXPECT_EQ(kept.number("eventGapHours"), 7);
  EXPECT_EQ(kept.keys().size(), 2) << "exactly what was chosen and is kept";
  const Settings chosen = *state().settings;
  launch();
  EXPECT_EQ(state().settings->gathering.eventGapHours, 7);
  EXPECT_FALSE(state().settings->layout.photoJPEG);
  EXPECT_EQ(state().savedPresets->front().name, "Мой");

  isDemo = true;
  launch();
  change([](Settings& settings) { settings.gathering.eventGapHours = 9; });
  settle();
  EXPECT_EQ(state().settings->gathering.eventGapHours, 9);
  EXPECT_EQ(kept.number("eventGapHours"), 7) << "a demo leaves a person's choices alone";
}

TEST_F(AppModelLaunchTest, twoModelsOnOneFolder_loseNoChoiceOfEither) {
  TemporaryFolder folder;
  FileDefaults own{folder.path()};
  FileDefaults others{folder.path()};
  launchWith(own);
  ModelHarness other;
  other.defaults = &others;
  other.launch();
  change([](Settings& settings) { settings.gathering.eventGapHours = 5; });
  Settings settings = *other.state().settings;
  settings.gathering.tripMinDays = 4;
  other.model->changeSettings(settings);
  other.settle();
  settle();
  FileDefaults later{folder.path()};
  launchWith(later);
  EXPECT_EQ(state().settings->gathering.eventGapHours, 5);
  EXPECT_EQ(state().settings->gathering.tripMinDays, 4);
  EXPECT_TRUE(later.takeFaults().empty());
}

TEST_F(AppModelLaunchTest, groupsOnScreen_areDumpedWhereThatIsWantedAndGoneAtTheNextLaunch) {
  TemporaryFolder folder;
  stateFolder = folder.path();
  keepsGroupsDebug = true;
  launch();
  makeReady();
  model->mergeGroups({"2026-05-20", "2026-05-21"});
  settle();
  const JsonValue dump = parseJson(folder.read("groups-debug.json"));
  EXPECT_EQ(*dump.member("merges"), parseJson(R"([{"groups":["2026-05-20","2026-05-21"]}])"));
  ASSERT_EQ(dump.member("groups")->asArray()->size(), 3U);
  const JsonValue& merged = dump.member("groups")->asArray()->front();
  EXPECT_EQ(*merged.member("children"), parseJson(R"(["2026-05-20","2026-05-21"])"));
  EXPECT_EQ(*merged.member("knownCount"), parseJson("0"));
  EXPECT_EQ(merged.member("members")->asArray()->size(), 6U);
  model->includeNone();
  settle();
  EXPECT_EQ(*parseJson(folder.read("groups-debug.json"))
                 .member("groups")
                 ->asArray()
                 ->front()
                 .member("isIncluded"),
            parseJson("false"));
  keepsGroupsDebug = false;
  launch();
  EXPECT_FALSE(folder.has("groups-debug.json"));
  EXPECT_FALSE(log.has("groups debug"));
}

}  // namespace
}  // namespace tavrix
