#include "settings/IdleSettings.h"

#include <gmock/gmock.h>

#include "settings/SettingKeys.h"

namespace tavrix {
namespace {

using enum IdleSetting::Reason;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<IdleSetting> idleIn(const std::vector<std::string>& assignments,
                                const std::vector<FolderNaming::Row>& rows = {}) {
  Settings settings;
  std::vector<std::string_view> keys;
  for (const std::string& assignment : assignments) {
    settings = std::get<Settings>(withSetting(std::move(settings), assignment));
    keys.push_back(std::string_view{assignment}.substr(0, assignment.find('=')));
  }
  return idleSettings(settings, keys, rows);
}

TEST(IdleSettings, settingWithoutWhatItNeeds_isFoundUntilThatIsGiven) {
  struct Row {
    std::string assignment;
    std::string needed;  ///< an assignment
    std::string other{};
  };
  const std::vector<Row> rows{
      {"liveOnlyPhoto=true", ""},
      {"granularity=month", "uiMode=byDate"},
      {"tripDistanceKm=9", "uiMode=trips"},
      {"tripMinDays=3", "uiMode=trips"},
      {"tripCityKm=9", "uiMode=trips"},
      {"tripMaxGapHours=9", "uiMode=trips"},
      {"homeWindowMonths=9", "uiMode=trips"},
      {"homeRadiusKm=9", "uiMode=trips"},
      {"homePeriods=true", "uiMode=trips"},
      {"homeOverride=1,2", "uiMode=trips"},
      {"jpegQuality=1", "photoJPEG=true"},
      {"flattenSingleKind=true", "separatePhotoVideo=true"},
      {"customFileNamePrefix=a", "fileNamePrefixMode=custom"},
      {"fileNamePrefixMode=custom", "customFileNamePrefix=a", "customFileNamePrefix"},
      {"packPerGroup=true", "packAsZip=true"},
  };
  for (const Row& row : rows) {
    const std::string_view key =
        std::string_view{row.assignment}.substr(0, row.assignment.find('='));
    if (!row.needed.empty()) {
      const std::string other = row.other.empty() ? row.needed : row.other;
      EXPECT_THAT(idleIn({row.assignment}),
                  ElementsAre(IdleSetting{.key = key, .reason = needsOther, .other = other}));
    }
    EXPECT_THAT(idleIn({row.needed.empty() ? "includeLive=true" : row.needed, row.assignment}),
                IsEmpty())
        << row.assignment;
  }
}

TEST(IdleSettings, settingThatAnotherOneHides_isFound) {
  struct Row {
    std::vector<std::string> assignments;
    IdleSetting idle;
  };
  const std::vector<Row> rows{
      {{"includeLive=false", "liveOnlyPhoto=true"},
       {"liveOnlyPhoto", needsOther, "includeLive=true"}},
      {{"uiMode=trips", "eventGapHours=9"}, {"eventGapHours", needsOther, "uiMode=events"}},
      {{"uiMode=flat", "splitByDistance=true"}, {"splitByDistance", needsOther, "uiMode=events"}},
      {{"splitByDistance=false", "eventGapKm=9"},
       {"eventGapKm", needsOther, "splitByDistance=true"}},
      {{"geocodingEnabled=false", "placeRadiusKm=9"},
       {"placeRadiusKm", needsOther, "geocodingEnabled=true"}},
      {{"geocodingEnabled=false", "mergeDistricts=true"},
       {"mergeDistricts", needsOther, "geocodingEnabled=true"}},
      {{"geocodingEnabled=false", "severalCities=true"},
       {"severalCities", needsOther, "geocodingEnabled=true"}},
      {{"nameByGroupID=true", "wholeFolderDates=true"},
       {"wholeFolderDates", overruled, "nameByGroupID=true"}},
      {{"uiMode=events", "wholeFolderDates=true"},
       {"wholeFolderDates", needsOther, "uiMode=byDate"}},
      {{"uiMode=byDate", "wholeFolderDates=true"},
       {"wholeFolderDates", needsOther, "granularity=month"}},
      {{"uiMode=trips", "homeOverride=1,2", "homePeriods=true"},
       {"homePeriods", overruled, "homeOverride"}},
      {{"uiMode=trips", "homeOverride=1,2", "homeWindowMonths=9"},
       {"homeWindowMonths", overruled, "homeOverride"}},
      {{"uiMode=trips", "homeOverrideName=a"}, {"homeOverrideName", needsOther, "homeOverride"}},
      {{"nameByGroupID=true", "nameTemplate={day}"},
       {"nameTemplate", overruled, "nameByGroupID=true"}},
      {{"nameByGroupID=true", "datelessName=a"}, {"datelessName", overruled, "nameByGroupID=true"}},
  };
  for (const Row& row : rows) {
    EXPECT_THAT(idleIn(row.assignments), ElementsAre(row.idle)) << row.idle.key;
  }
}

TEST(IdleSettings, switchesThatAreOffAndSettingsOfOthers_areNotFound) {
  EXPECT_THAT(idleIn({"packPerGroup=false", "flattenSingleKind=false", "liveOnlyPhoto=false",
                      "uiMode=trips", "splitByDistance=false", "customFileNamePrefix="}),
              IsEmpty());
  Settings kept;
  kept.gathering.homeOverride = GeoPoint{1, 2};
  EXPECT_THAT(idleSettings(kept, {"uiMode"}, {}), IsEmpty());
}

TEST(IdleSettings, idsOfNoGroup_areFound) {
  MediaGroup single;
  single.id = "a";
  MediaGroup merged;
  merged.id = "merge:b+c";
  merged.children.resize(2);
  merged.children[0].id = "b";
  merged.children[1].id = "c";
  const std::vector<FolderNaming::Row> rows{{"A", Shared<MediaGroup>{single}},
                                            {"BC", Shared<MediaGroup>{merged}}};
  EXPECT_THAT(idleIn({R"(nameOverrides={"a":"x","merge:b+c":"y"})",
                      R"(mergesByMode={"events":[["b","c"]],"trips":[["z"]]})"},
                     rows),
              IsEmpty());
  EXPECT_THAT(idleIn({R"(nameOverrides={"a":"x","b":"y","z":"z"})"}, rows),
              ElementsAre(IdleSetting{"nameOverrides", unknownGroups, "", {"b", "z"}}));
  EXPECT_THAT(idleIn({R"(mergesByMode={"events":[["b","c"],["a","z"]]})"}, rows),
              ElementsAre(IdleSetting{"mergesByMode", unknownGroups, "", {"z"}}));
  EXPECT_THAT(idleIn({R"(mergesByMode={"trips":[["a","b"]]})"}, rows),
              ElementsAre(IdleSetting{"mergesByMode", otherModes, "events"}));
  EXPECT_THAT(idleIn({"mergesByMode={}", "nameOverrides={}"}, rows), IsEmpty());
}

}  // namespace
}  // namespace tavrix
