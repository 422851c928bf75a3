#include <gmock/gmock.h>

#include <functional>
#include <set>

#include "settings/FolderMaking.h"
#include "settings/SettingKeys.h"

namespace tavrix {
namespace {

using testing::Contains;
using testing::ElementsAre;

Settings set(const std::string& assignment, Settings settings = {}) {
  auto changed = withSetting(std::move(settings), assignment);
  const auto* const result = std::get_if<Settings>(&changed);
  if (result == nullptr) throw std::invalid_argument{assignment};
  return *result;
}

SettingError errorOf(const std::string& assignment) {
  auto changed = withSetting({}, assignment);
  const auto* const error = std::get_if<SettingError>(&changed);
  if (error == nullptr) throw std::invalid_argument{"taken: " + assignment};
  return *error;
}

struct Assignment {
  std::string text;
  std::function<void(Settings&)> change;
};

TEST(SettingKeys, everyKey_setsItsField) {
  const std::vector<Assignment> rows{
      {"includePhotos=false", [](Settings& s) { s.content.includePhotos = false; }},
      {"includeLive=false", [](Settings& s) { s.content.includeLive = false; }},
      {"liveOnlyPhoto=true", [](Settings& s) { s.content.liveOnlyPhoto = true; }},
      {"includeVideos=false", [](Settings& s) { s.content.includeVideos = false; }},
      {"includeAAE=false", [](Settings& s) { s.content.includeAAE = false; }},
      {"editedPolicy=originalsOnly",
       [](Settings& s) { s.content.editedPolicy = BundleFilter::EditedPolicy::originalsOnly; }},
      {"skipOptimized=true", [](Settings& s) { s.content.skipOptimized = true; }},
      {"continueFolders=false", [](Settings& s) { s.layout.continueFolders = false; }},
      {"onlyNew=false", [](Settings& s) { s.layout.onlyNew = false; }},
      {"periodFrom=2026-05-20", [](Settings& s) { s.content.periodFrom = parseDay("2026-05-20"); }},
      {"periodTo=2026-05-21", [](Settings& s) { s.content.periodTo = parseDay("2026-05-21"); }},
      {"places=Italy, Rome",
       [](Settings& s) {
         s.content.places = PlaceFilter{{"Italy", "Rome"}, {"Italy", "Rome"}, false, false, ""};
       }},
      {"uiMode=trips", [](Settings& s) { s.gathering.uiMode = UIGroupingMode::trips; }},
      {"granularity=year", [](Settings& s) { s.gathering.granularity = UIGranularity::year; }},
      {"timeZoneID=Asia/Tokyo",
       [](Settings& s) { s.gathering.timeZone = *TimeZone::load("Asia/Tokyo"); }},
      {"datesFromNames=false", [](Settings& s) { s.gathering.datesFromNames = false; }},
      {"eventGapHours=0", [](Settings& s) { s.gathering.eventGapHours = 0; }},
      {"eventGapKm=1.5", [](Settings& s) { s.gathering.eventGapKm = 1.5; }},
      {"splitByDistance=false", [](Settings& s) { s.gathering.splitByDistance = false; }},
      {"placeRadiusKm=25", [](Settings& s) { s.gathering.placeRadiusKm = 25; }},
      {"tripDistanceKm=1e3", [](Settings& s) { s.gathering.tripDistanceKm = 1000; }},
      {"tripMinDays=10000", [](Settings& s) { s.gathering.tripMinDays = 10000; }},
      {"tripCityKm=7", [](Settings& s) { s.gathering.tripCityKm = 7; }},
      {"tripMaxGapHours=8", [](Settings& s) { s.gathering.tripMaxGapHours = 8; }},
      {"homeWindowMonths=0", [](Settings& s) { s.gathering.homeWindowMonths = 0; }},
      {"homeRadiusKm=3", [](Settings& s) { s.gathering.homeRadiusKm = 3; }},
      {"homeOverride=-55.75,37.62",
       [](Settings& s) { s.gathering.homeOverride = GeoPoint{-55.75, 37.62}; }},
      {"homeOverride= 55.75 , 37.62 ",
       [](Settings& s) { s.gathering.homeOverride = GeoPoint{55.75, 37.62}; }},
      {"homeOverrideName=Дача", [](Settings& s) { s.gathering.homeOverrideName = "Дача"; }},
      {"photoJPEG=true", [](Settings& s) { s.layout.photoJPEG = true; }},
      {"jpegQuality=1", [](Settings& s) { s.layout.jpegQuality = 1; }},
      {"videoH264=true", [](Settings& s) { s.layout.videoH264 = true; }},
      {"separatePhotoVideo=true", [](Settings& s) { s.layout.separatePhotoVideo = true; }},
      {"flattenSingleKind=true", [](Settings& s) { s.layout.flattenSingleKind = true; }},
      {"fileNamePrefixMode=custom",
       [](Settings& s) { s.layout.fileNamePrefixMode = FileNamePrefixMode::custom; }},
      {"customFileNamePrefix=a=b", [](Settings& s) { s.layout.customFileNamePrefix = "a=b"; }},
      {"packAsZip=true", [](Settings& s) { s.layout.packAsZip = true; }},
      {"packPerGroup=true", [](Settings& s) { s.layout.packPerGroup = true; }},
      {R"(nameTemplate={"tokens":[],"language":"english"})",
       [](Settings& s) { s.naming.nameTemplate = NameTemplate{{}, NameLanguage::english}; }},
      {"nameTemplate={language:english}{year}",
       [](Settings& s) {
         s.naming.nameTemplate = NameTemplate{{name_token::Year{}}, NameLanguage::english};
       }},
      {"geocodingEnabled=false", [](Settings& s) { s.naming.geocodingEnabled = false; }},
      {"mergeDistricts=true", [](Settings& s) { s.naming.mergeDistricts = true; }},
      {"mergeSameNames=true", [](Settings& s) { s.naming.mergeSameNames = true; }},
      {"severalCities=true", [](Settings& s) { s.naming.severalCities = true; }},
      {"cameraDays=true", [](Settings& s) { s.gathering.cameraDays = true; }},
      {"homePeriods=true", [](Settings& s) { s.gathering.homePeriods = true; }},
      {"wholeFolderDates=true", [](Settings& s) { s.naming.wholeFolderDates = true; }},
      {"datelessName=", [](Settings& s) { s.naming.datelessName = ""; }},
      {"nameByGroupID=true", [](Settings& s) { s.naming.nameByGroupID = true; }},
      {R"(nameOverrides={"2026-05-20":"Дача"})",
       [](Settings& s) { s.naming.nameOverrides = {{"2026-05-20", "Дача"}}; }},
      {R"(mergesByMode={"byDate":[["a","b"],[]]})",
       [](Settings& s) { s.gathering.mergesByMode = {{"byDate", {{"a", "b"}, {}}}}; }},
      {R"(rejectedSuggestions={"trips":[["a","b"]]})",
       [](Settings& s) { s.gathering.rejectedSuggestions = {{"trips", {{"a", "b"}}}}; }},
  };
  std::set<std::string> keys;
  for (const Assignment& row : rows) keys.insert(row.text.substr(0, row.text.find('=')));
  EXPECT_EQ(keys.size(), settingKeys().size());
  for (const Assignment& row : rows) {
    Settings expected;
    row.change(expected);
    EXPECT_NE(expected, Settings{}) << row.text;
    EXPECT_EQ(set(row.text), expected) << row.text;
  }
}

TEST(SettingKeys, badValue_namesKeyValueAndForm) {
  struct Row {
    std::string key;
    std::vector<std::string> values;
    SettingForm form;
  };
  const std::vector<Row> rows{
      {"onlyNew", {"", "1", "yes", "True"}, SettingForm::boolean},
      {"uiMode", {"", "ByDate", "day"}, SettingForm::choice},
      {"eventGapKm",
       {"", "-1", "nan", "inf", "1,5", "1km", " 1", "1e999"},
       SettingForm::atLeastZero},
      {"jpegQuality", {"-0.1", "1.01", "nan"}, SettingForm::fraction},
      {"tripMinDays", {"-1", "10001", "2.5", "99999999999"}, SettingForm::count},
      {"periodTo", {"", "2026-02-30", "20.05.2026", "2026-5-20"}, SettingForm::day},
      {"timeZoneID", {"", "Mars/Olympus", "../../etc/passwd"}, SettingForm::timeZone},
      {"homeOverride", {"", "55", "91,0", "0,181", "1,2,3", "a,b", "1 2", ","}, SettingForm::point},
      {"nameTemplate",
       {"", "[]", "{yaer}", "Предпоследний", R"({"tokens":5,"language":"english"})"},
       SettingForm::nameTemplate},
      {"nameOverrides", {"", "[]", R"({"a":1})", "{"}, SettingForm::textMap},
      {"mergesByMode", {"", R"({"byDate":["a"]})", R"({"byDate":[[1]]})"}, SettingForm::merges},
  };
  for (const Row& row : rows) {
    for (const std::string& value : row.values) {
      const SettingError error = errorOf(row.key + "=" + value);
      EXPECT_EQ(error.kind, SettingError::Kind::badValue) << value;
      EXPECT_EQ(error.key, row.key);
      EXPECT_EQ(error.value, value);
      EXPECT_EQ(error.form, row.form) << row.key;
    }
  }
  EXPECT_THAT(errorOf("granularity=week").choices, ElementsAre("day", "month", "year"));
  EXPECT_TRUE(errorOf("nameTemplate={").template_.has_value());
}

TEST(SettingKeys, nameTemplate_isAlsoGivenByTheTitleOfASavedPreset) {
  const NameTemplate year{{name_token::Year{}}, NameLanguage::english};
  const auto changed = withSetting({}, "nameTemplate=мой год", {{"Мой год", year}});
  EXPECT_EQ(std::get<Settings>(changed).naming.nameTemplate, year);
}

TEST(SettingKeys, byteOrderMarkBeforeJson_isPassedOver) {
  const std::string mark = "\xEF\xBB\xBF";
  EXPECT_EQ(set("nameOverrides=" + mark + R"({"a":"b"})"), set(R"(nameOverrides={"a":"b"})"));
  EXPECT_EQ(set("places=" + mark + R"({"cities":["Rome"]})"), set(R"(places={"cities":["Rome"]})"));
}

TEST(SettingKeys, anotherHome_hasNoNameYet) {
  const Settings named = set("homeOverrideName=Дача", set("homeOverride=55.75,37.62"));
  EXPECT_EQ(set("homeOverride=55.75,37.62", named), named);
  EXPECT_EQ(set("homeOverride=1,2", named).gathering.homeOverrideName, std::nullopt);
  EXPECT_EQ(set("homeOverrideName=", named).gathering.homeOverrideName, std::nullopt);
}

TEST(SettingKeys, otherText_isUnknownKeyOrNoAssignment) {
  EXPECT_EQ(errorOf("includephotos=true").kind, SettingError::Kind::unknownKey);
  EXPECT_EQ(errorOf("=true").kind, SettingError::Kind::unknownKey);
  EXPECT_EQ(errorOf("onlyNew").kind, SettingError::Kind::notAssignment);
  EXPECT_EQ(errorOf("onlyNew").key, "onlyNew");
}

TEST(Settings, onAMachine_takeItsZoneAndNameTheDatelessInItsLanguage) {
  const TimeZone tokyo = *TimeZone::load("Asia/Tokyo");
  EXPECT_EQ(initialSettings(tokyo, "en_US").naming.datelessName, "No date");
  EXPECT_EQ(initialSettings(tokyo, "ru_RU").naming.datelessName, "Без даты");
  EXPECT_EQ(initialSettings(tokyo, "de_DE").naming.datelessName, "Без даты");
  EXPECT_EQ(groupingSettings(initialSettings(tokyo, "en_US")).timeZone, tokyo);
}

TEST(Settings, toTheCore_keepTheirMeaning) {
  EXPECT_EQ(bundleFilter({}), BundleFilter{});
  EXPECT_EQ(groupingSettings({}), GroupingSettings{});
  EXPECT_EQ(transferOptions({}, "Anna"), TransferOptions{});
  EXPECT_EQ(bundleFilter(set("periodFrom=2026-05-20")).from, parseDay("2026-05-20"));
  EXPECT_EQ(groupingSettings(set("homeWindowMonths=2")).homeWindowDays, 60);
  EXPECT_EQ(groupingMode({}), GroupingMode{grouping_mode::Events{}});
  EXPECT_EQ(groupingMode(set("granularity=month", set("uiMode=byDate"))),
            GroupingMode{grouping_mode::ByDate{DateGranularity::month}});
  EXPECT_EQ(groupingMode(set("uiMode=flat")), GroupingMode{grouping_mode::Flat{}});
  EXPECT_EQ(namingSettings(set("nameByGroupID=true"), "ru_RU").systemLocaleID, "ru_RU");
  EXPECT_THAT(namingSettings(set(R"(nameOverrides={"a":"b"})"), "").overrides,
              Contains(std::pair<const std::string, std::string>{"a", "b"}));
}

TEST(TransferOptions, ofSettings_knowPrefixContainerAndLayout) {
  using enum TransferOptions::Container;
  struct Row {
    std::vector<std::string> assignments;
    std::function<void(TransferOptions&)> change;
  };
  const std::vector<Row> rows{
      {{"fileNamePrefixMode=phone"}, [](auto& o) { o.fileNamePrefix = "Anna "; }},
      {{"fileNamePrefixMode=custom"}, [](auto&) {}},
      {{"fileNamePrefixMode=custom", "customFileNamePrefix=VK_"},
       [](auto& o) { o.fileNamePrefix = "VK_"; }},
      {{"customFileNamePrefix=VK_"}, [](auto&) {}},
      {{"packPerGroup=true"}, [](auto&) {}},
      {{"packAsZip=true"}, [](auto& o) { o.container = zipWhole; }},
      {{"packAsZip=true", "packPerGroup=true"}, [](auto& o) { o.container = zipPerGroup; }},
      {{"uiMode=flat"}, [](auto& o) { o.flatLayout = true; }},
      {{"photoJPEG=true", "jpegQuality=0.5"},
       [](auto& o) {
         o.photoFormat = PhotoOutputFormat::jpeg;
         o.jpegQuality = 0.5;
       }},
      {{"videoH264=true"}, [](auto& o) { o.videoFormat = VideoOutputFormat::h264; }},
  };
  for (const Row& row : rows) {
    Settings settings;
    for (const std::string& assignment : row.assignments) settings = set(assignment, settings);
    TransferOptions expected;
    row.change(expected);
    EXPECT_EQ(transferOptions(settings, "Anna"), expected) << row.assignments.back();
  }
}

TEST(WayBack, fromSwitchesThatTheNoteDoesNotName_switchesThemOff) {
  const auto before = folderMaking(Settings{}, "ru_RU");
  for (const char* const key : {"cameraDays", "severalCities", "wholeFolderDates"}) {
    const Settings now = set(std::string{key} + "=true");
    const WayBack way = wayBack(now, "ru_RU", before);
    EXPECT_THAT(way.keys, ElementsAre(key));
    EXPECT_TRUE(way.isComplete) << key;
    EXPECT_EQ(way.settings, Settings{}) << key;
    EXPECT_TRUE(wayBack({}, "ru_RU", folderMaking(now, "ru_RU")).isComplete) << key;
  }
  const WayBack home = wayBack(set("datelessName=?"), "ru_RU", before);
  EXPECT_THAT(home.keys, ElementsAre("datelessName"));
  EXPECT_FALSE(home.isComplete);
}

TEST(WayBack, toATemplateOfItsOwnLanguage_isThatTemplateAsItIsTyped) {
  const std::string typed = "nameTemplate={language:english}{year} {city:upper}";
  const WayBack way = wayBack({}, "ru_RU", folderMaking(set(typed), "ru_RU"));
  EXPECT_THAT(way.keys, ElementsAre("nameTemplate"));
  EXPECT_THAT(way.assignments, ElementsAre(typed));
  EXPECT_EQ(way.locale, std::nullopt);
  EXPECT_TRUE(way.isComplete);
}

}  // namespace
}  // namespace tavrix
