#include "settings/PersistedSettings.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <fstream>

#include "settings/SettingKeys.h"
#include "settings/defaults/DefaultsFile.h"
#include "settings/defaults/MemoryDefaults.h"

namespace tavrix {
namespace {

using PersistedSettings::Values;
using testing::ElementsAre;
using testing::IsEmpty;

Values readText(const std::string& json, Values initial = {}) {
  return PersistedSettings::read(MemoryDefaults{DefaultsFile::decode(json)}, std::move(initial));
}

Values afterSetting(std::initializer_list<std::string> assignments) {
  Values values;
  for (const std::string& assignment : assignments) {
    values.settings = std::get<Settings>(withSetting(values.settings, assignment));
  }
  return values;
}

TEST(PersistedSettings, exampleOfTheDescription_isRead) {
  std::ifstream page{std::string{TAVRIX_DOCS} + "/defaults.md"};
  const std::string text{std::istreambuf_iterator<char>{page}, {}};
  const auto start = text.find("```json\n") + 8;
  Values expected =
      afterSetting({"eventGapHours=2.5", "splitByDistance=false", "tripMinDays=3",
                    "homeOverride=55.75,37.62", "homeOverrideName=Дача",
                    R"(nameTemplate={"tokens":[{"year":{"_0":"full"}}],"language":"system"})",
                    R"(nameOverrides={"event-2026-05-20":"Поход"})",
                    R"(mergesByMode={"events":[["event-2026-05-20","event-2026-05-21"]]})"});
  expected.savedPresets = {{"Только город", {{name_token::City{}}, NameLanguage::russian}}};
  EXPECT_EQ(readText(text.substr(start, text.find("```", start) - start)), expected);
}

TEST(PersistedSettings, objectsThatAreNotOfTheKey_leaveTheInitialValue) {
  struct Row {
    std::string key;
    std::vector<std::string> objects;
  };
  const std::vector<Row> rows{
      {"eventGapHours", {R"("4")", "true", "null", "[]", "{}", "-1", "-0.001"}},
      {"eventGapKm", {R"("30")", "{}", "-1e300"}},
      {"splitByDistance", {R"("true")", "null", "[0]"}},
      {"placeRadiusKm", {R"("2")"}},
      {"tripDistanceKm", {"{}"}},
      {"tripMinDays",
       {R"("2")", "-1", "10001", "2147483648", "-2147483649", "1e300", "18446744073709551615",
        "false"}},
      {"tripCityKm", {"[50]"}},
      {"tripMaxGapHours", {"null"}},
      {"homeWindowMonths", {"10001", "4294967302", "null"}},
      {"manualHome",
       {"5", "[55,37]", "{}", R"({"latitude":55})", R"({"latitude":"55","longitude":37})",
        R"({"latitude":90.1,"longitude":37})", R"({"latitude":55,"longitude":-180.1})",
        R"({"latitude":55,"longitude":37,"name":5})"}},
      {"geocodingEnabled", {R"("no")"}},
      {"skipOptimized", {"{}"}},
      {"continueFolders", {"{}"}},
      {"severalCities", {"[]"}},
      {"wholeFolderDates", {"null"}},
      {"datesFromNames", {R"("no")"}},
      {"cameraDays", {"[]"}},
      {"homePeriods", {"\"yes\""}},
      {"nameTemplate",
       {"5", R"("{}")", "[]", "{}", R"({"tokens":[],"language":"french"})",
        R"({"tokens":[{"year":{"_0":"full"},"day":{"_0":"pad2"}}],"language":"system"})",
        R"({"tokens":[{"decade":{"_0":"full"}}],"language":"system"})"}},
      {"savedPresets",
       {"{}", "[5]", R"([{"name":"a"}])", R"([{"template":{"tokens":[],"language":"system"}}])",
        R"([{"name":5,"template":{"tokens":[],"language":"system"}}])",
        R"([{"name":"a","template":{"tokens":[],"language":"system"}},{"name":"b","template":5}])"}},
      {"nameOverrides", {"[]", "5", R"({"a":5})", R"({"a":"b","c":null})"}},
      {"mergesByMode", {"[]", R"({"events":{}})", R"({"events":["a"]})", R"({"events":[[5]]})"}},
      {"rejectedSuggestions", {"[]", R"({"trips":["a"]})"}},
  };
  EXPECT_EQ(rows.size(), PersistedSettings::keys().size());
  Values initial = afterSetting({"homeOverride=1,2", R"(nameOverrides={"x":"y"})"});
  initial.savedPresets = {{"mine", {}}};
  for (const Row& row : rows) {
    for (const std::string& object : row.objects) {
      EXPECT_EQ(readText("{\"" + row.key + "\":" + object + "}", initial), initial)
          << row.key << ": " << object;
      EXPECT_FALSE(PersistedSettings::isTaken(row.key, parseJson(object))) << row.key << object;
      const auto skipped =
          PersistedSettings::skipped(MemoryDefaults{{{row.key, parseJson(object)}}});
      ASSERT_EQ(skipped.size(), 1U) << row.key << object;
      EXPECT_EQ(skipped[0].key, row.key);
      EXPECT_EQ(skipped[0].object, parseJson(object));
    }
  }
}

TEST(PersistedSettings, formsThatAPersonMayWrite_areRead) {
  Values expected = afterSetting(
      {"splitByDistance=false", "skipOptimized=true", "tripMinDays=3", "homeOverride=-90,180"});
  expected.settings.gathering.mergesByMode = {{"later", {{}}}};
  expected.settings.gathering.eventGapHours = 0;
  expected.settings.gathering.homeWindowMonths = 10000;
  const std::string text = R"({"splitByDistance":false,"skipOptimized":2,"tripMinDays":3.9,
                   "eventGapHours":0,"homeWindowMonths":10000.9,
                   "manualHome":{"latitude":-90,"longitude":180,"name":null,"more":1},
                   "mergesByMode":{"later":[[]]},"unheardOf":[]})";
  EXPECT_EQ(readText(text), expected);
  EXPECT_THAT(PersistedSettings::skipped(MemoryDefaults{DefaultsFile::decode(text)}), IsEmpty());
}

TEST(PersistedSettings, change_writesItsKeyAlone) {
  struct Row {
    std::string assignment;
    std::string expected;
  };
  const std::vector<Row> rows{
      {"eventGapHours=2.5", R"({"eventGapHours":2.5})"},
      {"splitByDistance=false", R"({"splitByDistance":0})"},
      {"geocodingEnabled=true", "{}"},
      {"tripMinDays=5", R"({"tripMinDays":5})"},
      {"homeOverride=1,2.5", R"({"manualHome":{"latitude":1,"longitude":2.5}})"},
      {R"(nameOverrides={"a":"Дача"})", R"({"nameOverrides":{"a":"Дача"}})"},
      {R"(mergesByMode={"trips":[["a","b"]]})", R"({"mergesByMode":{"trips":[["a","b"]]}})"},
      {R"(nameTemplate={"tokens":[],"language":"english"})",
       R"({"nameTemplate":{"language":"english","tokens":[]}})"},
      // Reset at every launch, so not stored.
      {"uiMode=trips", "{}"},
      {"photoJPEG=true", "{}"},
      {"mergeDistricts=true", "{}"},
  };
  for (const Row& row : rows) {
    MemoryDefaults defaults;
    PersistedSettings::write(defaults, {}, afterSetting({row.assignment}), false);
    DefaultsObjects written;
    for (const std::string& key : defaults.keys()) written.emplace(key, *defaults.object(key));
    EXPECT_EQ(DefaultsFile::encode(written),
              DefaultsFile::encode(DefaultsFile::decode(row.expected)))
        << row.assignment;
  }
}

TEST(PersistedSettings, homeThatIsGivenUp_isRemovedAndAnEmptiedMapIsNot) {
  MemoryDefaults defaults{DefaultsFile::decode(
      R"({"manualHome":{"latitude":1,"longitude":2},"nameOverrides":{"a":"b"},"other":1})")};
  const Values before = PersistedSettings::read(defaults, {});
  PersistedSettings::write(defaults, before, {}, false);
  EXPECT_THAT(defaults.keys(), ElementsAre("nameOverrides", "other"));
  EXPECT_EQ(PersistedSettings::read(defaults, before).settings.naming.nameOverrides,
            Settings{}.naming.nameOverrides);
}

TEST(PersistedSettings, demo_leavesThePersonsChoicesAlone) {
  MemoryDefaults defaults{
      {{"eventGapHours", {2.0}}, {"packAsZip", {1.0}}, {"mergeDistricts", {1.0}}}};
  PersistedSettings::write(defaults, {}, afterSetting({"eventGapHours=9", "homeOverride=1,2"}),
                           true);
  EXPECT_EQ(defaults.number("eventGapHours"), 2.0);
  PersistedSettings::forgetAtLaunch(defaults, true);
  EXPECT_THAT(defaults.keys(), ElementsAre("eventGapHours", "mergeDistricts"));
}

TEST(PersistedSettings, launch_forgetsConversionPackingAndDestination) {
  MemoryDefaults defaults{DefaultsFile::decode(
      R"({"destinationBookmark":"x","eventGapHours":2,"flattenSingleKind":1,"jpegQuality":0.5,
          "mergeDistricts":1,"mergeSameNames":1,"packAsZip":1,"packPerGroup":1,
          "packSingleArchive":1,"photoJPEG":1,"uiLanguage":"en","videoH264":1})")};
  EXPECT_EQ(PersistedSettings::read(defaults, {}), afterSetting({"eventGapHours=2"}));
  PersistedSettings::forgetAtLaunch(defaults, false);
  EXPECT_THAT(defaults.keys(), ElementsAre("eventGapHours", "uiLanguage"));
}

TEST(PersistedSettings, settings_knowTheirKey) {
  EXPECT_EQ(PersistedSettings::keyOf("homeOverride"), "manualHome");
  EXPECT_EQ(PersistedSettings::keyOf("homeOverrideName"), "manualHome");
  for (const char* name : {"uiMode", "packAsZip", "savedPresets", "manualHome", ""}) {
    EXPECT_EQ(PersistedSettings::keyOf(name), std::nullopt) << name;
  }
}

TEST(PersistedSettings, templateBeyondAllBounds_isHandedOverAndDoesNotRead) {
  Values values;
  values.settings.naming.nameTemplate.tokens = {name_token::Literal{std::string(2U << 20U, 'x')}};
  const auto object = PersistedSettings::objectOf("nameTemplate", values);
  ASSERT_TRUE(object);
  EXPECT_FALSE(PersistedSettings::isTaken("nameTemplate", *object));
}

double anyMeasure() {
  return *rc::gen::suchThat(
      rc::gen::map(rc::gen::arbitrary<double>(), [](double x) { return std::abs(x); }),
      [](double x) { return std::isfinite(x); });
}

std::string anyName() {
  return *rc::gen::element<std::string>("", "Дача", "a\"b\\c\n", "event-2026-05-20", "🏔️", " ");
}

NameTemplate anyTemplate() {
  const auto token = [] {
    return *rc::gen::element<NameToken>(
        name_token::Year{YearStyle::twoDigits}, name_token::Period{}, name_token::Literal{" — "},
        name_token::Literal{""}, name_token::Country{CountryStyle::code, TextCaseStyle::lower});
  };
  NameTemplate result;
  for (int count = *rc::gen::inRange(0, 5); count > 0; --count) result.tokens.push_back(token());
  result.language = *rc::gen::element(NameLanguage::system, NameLanguage::russian);
  return result;
}

Values anyValues() {
  Values values;
  Settings& s = values.settings;
  s.gathering.eventGapHours = anyMeasure();
  s.gathering.eventGapKm = anyMeasure();
  s.gathering.placeRadiusKm = anyMeasure();
  s.gathering.tripDistanceKm = anyMeasure();
  s.gathering.tripCityKm = anyMeasure();
  s.gathering.tripMaxGapHours = anyMeasure();
  s.gathering.tripMinDays = *rc::gen::inRange(0, largestSettingCount + 1);
  s.gathering.homeWindowMonths = *rc::gen::inRange(0, largestSettingCount + 1);
  s.gathering.splitByDistance = *rc::gen::arbitrary<bool>();
  s.gathering.homePeriods = *rc::gen::arbitrary<bool>();
  s.naming.geocodingEnabled = *rc::gen::arbitrary<bool>();
  s.content.skipOptimized = *rc::gen::arbitrary<bool>();
  if (*rc::gen::arbitrary<bool>()) {
    s.gathering.homeOverride =
        GeoPoint{*rc::gen::inRange(-90, 91) + 0.0, *rc::gen::inRange(-1800, 1801) / 10.0};
    if (*rc::gen::arbitrary<bool>()) s.gathering.homeOverrideName = anyName();
  }
  s.naming.nameTemplate = anyTemplate();
  for (int count = *rc::gen::inRange(0, 3); count > 0; --count) {
    s.naming.nameOverrides[anyName()] = anyName();
    s.gathering.mergesByMode[anyName()].push_back({anyName(), anyName()});
    values.savedPresets.push_back({anyName(), anyTemplate()});
  }
  return values;
}

RC_GTEST_PROP(PersistedSettings, anyValues_areTheSameAfterARestart, ()) {
  const Values before = anyValues();
  const Values after = anyValues();
  MemoryDefaults defaults;
  PersistedSettings::write(defaults, {}, before, false);
  PersistedSettings::write(defaults, before, after, false);
  DefaultsObjects written;
  for (const std::string& key : defaults.keys()) written.emplace(key, *defaults.object(key));
  RC_ASSERT(readText(DefaultsFile::encode(written)) == after);
  RC_ASSERT(PersistedSettings::changes(after, after).empty());
}

/// Returns an object that is valid, or nearly valid, for some key.
JsonValue anyObject(int depth) {
  const std::string name = *rc::gen::element<std::string>(
      "latitude", "longitude", "name", "template", "tokens", "language", "year", "_0", "events");
  switch (*rc::gen::inRange(0, depth > 0 ? 9 : 4)) {
    case 0:
      return {*rc::gen::arbitrary<bool>()};
    case 1:
      return {*rc::gen::arbitrary<double>()};
    case 2:
      return {static_cast<std::int64_t>(*rc::gen::inRange(-100, 20'000))};
    case 3:
      return {*rc::gen::element<std::string>("full", "system", "a")};
    case 4:
    case 5:
      return {JsonValue::Array{anyObject(depth - 1)}};
    case 6:
      return {JsonValue::Object{{"latitude", anyObject(0)}, {"longitude", anyObject(0)}}};
    default:
      return {JsonValue::Object{{name, anyObject(depth - 1)}, {"tokens", anyObject(depth - 1)}}};
  }
}

RC_GTEST_PROP(PersistedSettings, anyObjects_leaveValuesThatKeepTheirMeaning, ()) {
  DefaultsObjects objects;
  for (const std::string_view key : PersistedSettings::keys()) {
    objects.emplace(key, anyObject(4));
  }
  const Values values = PersistedSettings::read(MemoryDefaults{objects}, {});
  MemoryDefaults again;
  PersistedSettings::write(again, {}, values, false);
  RC_ASSERT(PersistedSettings::read(again, {}) == values);
  RC_ASSERT(groupingSettings(values.settings).homeWindowDays >= 0);
  RC_ASSERT(!values.settings.gathering.homeOverride ||
            isOnEarth(*values.settings.gathering.homeOverride));
}

}  // namespace
}  // namespace tavrix
