#include "interface/options/SettingsModel.h"

#include <gmock/gmock.h>

#include "foundation/tests/support/ManualMainLoop.h"
#include "interface/options/UnusedSettings.h"
#include "interface/session/ViewChoices.h"
#include "interface/session/WindowSession.h"
#include "settings/SettingKeys.h"
#include "settings/defaults/MemoryDefaults.h"

namespace tavrix::window {
namespace {

using testing::Contains;
using testing::Not;

/// A window without a screen.
struct Inspector {
  Inspector() {
    SettingsModel::connect(&settings, &SettingsModel::changed, [this] { ++changes; });
  }

  const Settings& now() const { return *session.model().state().settings; }
  void set(std::string_view assignment) {
    session.model().changeSettings(std::get<Settings>(withSetting(now(), assignment)));
    loop.runDue();
  }

  ManualMainLoop loop;
  MemoryDefaults defaults;
  WindowSession session{{.loop = loop, .defaults = &defaults}};
  Words words{Language::russian};
  SettingsModel settings{session, words};
  int changes = 0;
};

TEST(SettingsModel, changesAndFollowsTheModel) {
  Inspector inspector;
  SettingsModel& settings = inspector.settings;
  settings.includeVideos()->setValue(false);
  settings.editedPolicy()->pick(1);
  settings.eventGapHours()->type(QStringLiteral("2,5 ч"));
  EXPECT_TRUE(settings.periodFrom()->type(QStringLiteral("18.05.2026")));
  EXPECT_FALSE(settings.periodTo()->type(QStringLiteral("31.02.2026")));
  EXPECT_TRUE(settings.timeZone()->type(QStringLiteral("europe/rome")));
  const Settings& now = inspector.now();
  EXPECT_FALSE(now.content.includeVideos);
  EXPECT_EQ(now.content.editedPolicy, BundleFilter::EditedPolicy::editedOnly);
  EXPECT_EQ(now.gathering.eventGapHours, 2.5);
  EXPECT_EQ(now.content.periodFrom, std::chrono::year{2026} / 5 / 18);
  EXPECT_FALSE(now.content.periodTo);
  EXPECT_EQ(now.gathering.timeZone.id(), "Europe/Rome");
  inspector.loop.runDue();

  const int before = inspector.changes;
  inspector.set("eventGapHours=6");
  EXPECT_GT(inspector.changes, before);
  EXPECT_EQ(settings.eventGapHours()->text(), QStringLiteral("6"));
  EXPECT_EQ(settings.eventGapHours()->was(), QStringLiteral("было 4 ч"));
  settings.eventGapHours()->reset();
  EXPECT_EQ(inspector.now().gathering.eventGapHours, 4);
  EXPECT_EQ(settings.eventGapHours()->was(), QString{});
}

TEST(SettingsModel, outOfRange_takesTheNearestNumber) {
  Inspector inspector;
  SettingsModel& settings = inspector.settings;
  settings.tripCityKm()->type(QStringLiteral("-3"));
  settings.tripMinDays()->type(QStringLiteral("20000,7"));
  settings.jpegQuality()->setValue(170);
  EXPECT_EQ(inspector.now().gathering.tripCityKm, 0);
  EXPECT_EQ(inspector.now().gathering.tripMinDays, 10000);
  EXPECT_EQ(inspector.now().layout.jpegQuality, 1);
  settings.tripCityKm()->type(QStringLiteral("далеко"));
  EXPECT_EQ(settings.tripCityKm()->text(), QStringLiteral("0"));
}

TEST(SettingsModel, settingWithoutEffect_isNotUsed) {
  struct Case {
    std::string_view assignment;
    std::set<std::string_view> unused;
    std::set<std::string_view> used;
  };
  const Case cases[] = {
      {"uiMode=events",
       {"tripCityKm", "homeOverride", "homePeriods", "wholeFolderDates"},
       {"eventGapHours", "splitByDistance"}},
      {"uiMode=trips",
       {"eventGapHours", "splitByDistance"},
       {"tripCityKm", "homeWindowMonths", "homePeriods", "wholeFolderDates"}},
      {"splitByDistance=false", {"eventGapKm"}, {"splitByDistance"}},
      {"includeLive=false", {"liveOnlyPhoto"}, {"includeLive"}},
      {"packAsZip=true", {"onlyNew"}, {"packPerGroup", "packAsZip"}},
      {"packAsZip=false", {"packPerGroup"}, {"onlyNew"}},
      {"separatePhotoVideo=false", {"flattenSingleKind"}, {}},
      {"geocodingEnabled=false", {"mergeDistricts", "placeRadiusKm"}, {"nameTemplate"}},
  };
  for (const Case& each : cases) {
    const auto unused =
        unusedSettings(std::get<Settings>(withSetting(Settings{}, each.assignment)));
    for (const auto key : each.unused) EXPECT_THAT(unused, Contains(key)) << each.assignment;
    for (const auto key : each.used) EXPECT_THAT(unused, Not(Contains(key))) << each.assignment;
  }
}

TEST(SettingsModel, draftOfPrefix_isUsedOnceTaken) {
  Inspector inspector;
  PrefixSetting& prefix = *inspector.settings.prefix();
  prefix.pick(PrefixSetting::Phone);
  EXPECT_EQ(prefix.example(), QStringLiteral("iPhone IMG_0001.HEIC"));
  prefix.pick(PrefixSetting::Custom);
  prefix.setDraft(QStringLiteral("Отпуск/"));
  EXPECT_EQ(prefix.example(), QStringLiteral("Отпуск-IMG_0001.HEIC"));
  EXPECT_EQ(inspector.now().layout.fileNamePrefixMode, FileNamePrefixMode::phone);
  prefix.pick(PrefixSetting::Phone);
  EXPECT_EQ(inspector.now().layout.customFileNamePrefix, "");
  prefix.pick(PrefixSetting::Custom);
  prefix.setDraft(QStringLiteral("Отпуск "));
  prefix.take();
  EXPECT_EQ(inspector.now().layout.fileNamePrefixMode, FileNamePrefixMode::custom);
  EXPECT_EQ(inspector.now().layout.customFileNamePrefix, "Отпуск ");
  prefix.setDraft({});
  prefix.take();
  EXPECT_EQ(inspector.now().layout.fileNamePrefixMode, FileNamePrefixMode::none);
}

TEST(ViewChoices, areKeptWithinTheirBounds) {
  ManualMainLoop loop;
  MemoryDefaults defaults{
      {{"inspector.width", JsonValue{9000.0}}, {"sidebar.years.expanded", JsonValue{0.0}}}};
  {
    WindowSession session{{.loop = loop, .defaults = &defaults}};
    ViewChoices view{session};
    EXPECT_EQ(view.inspectorWidth(), 440);
    EXPECT_FALSE(view.yearsExpanded());
    EXPECT_TRUE(view.placesExpanded());
    view.setInspectorWidth(10);
    view.keepInspectorWidth();
    view.setPlacesExpanded(false);
  }
  EXPECT_EQ(defaults.number("inspector.width"), 280);
  EXPECT_EQ(defaults.number("sidebar.places.expanded"), 0);
}

}  // namespace
}  // namespace tavrix::window
