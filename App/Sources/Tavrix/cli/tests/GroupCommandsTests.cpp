#include <fmt/format.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "cli/tests/CommandTester.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// Returns a still of ten bytes; `place` is empty or `"lat":…,"lon":…`.
std::string entry(const std::string& name, const std::string& time, const std::string& place) {
  return R"({"name":")" + name + R"(","kind":"photo","size":10)" +
         (time.empty() ? "" : R"(,"exifDate":")" + time + R"(","exifOffset":"+00:00")") +
         (place.empty() ? "" : "," + place) + "}";
}

const std::string moscow = R"("lat":55.75,"lon":37.62)";
const std::string rome = R"("lat":41.9,"lon":12.5)";
const std::string naples = R"("lat":40.85,"lon":14.27)";

/// Four days at home, three in Rome, one in Naples, and shots without place or date.
const std::string travels = "[" + entry("H1.JPG", "2026:04:01 12:00:00", moscow) + "," +
                            entry("H2.JPG", "2026:04:10 12:00:00", moscow) + "," +
                            entry("H3.JPG", "2026:04:20 12:00:00", moscow) + "," +
                            entry("H4.JPG", "2026:04:30 12:00:00", moscow) + "," +
                            entry("R1.JPG", "2026:05:10 12:00:00", rome) + "," +
                            entry("R2.JPG", "2026:05:11 12:00:00", rome) + "," +
                            entry("X1.JPG", "2026:05:11 13:00:00", "") + "," +
                            entry("R3.JPG", "2026:05:12 12:00:00", rome) + "," +
                            entry("N1.JPG", "2026:05:12 15:00:00", naples) + "," +
                            entry("X2.JPG", "2026:05:15 12:00:00", "") + "," +
                            entry("U.JPG", "", "") + "]";

struct GroupCommands : testing::Test {
  GroupCommands() { tester.addPhone(travels); }

  CommandResult groups(const std::vector<std::string>& settings,
                       const std::vector<std::string>& options = {}) const {
    std::vector<std::string> call{"groups", "phone"};
    for (const std::string& setting : settings) call.insert(call.end(), {"--set", setting});
    call.insert(call.end(), options.begin(), options.end());
    CommandResult result = tester.run(call);
    EXPECT_EQ(result.status, ExitStatus::done) << result.err;
    return result;
  }

  /// Returns the groups as "id folder: asset asset; …".
  std::string shape(const std::vector<std::string>& settings) const {
    std::string text;
    const JsonValue json = groups(settings, {"--json"}).json();
    for (const JsonValue& group : *json.member("groups")->asArray()) {
      if (!text.empty()) text += "; ";
      text += *group.member("id")->asString() + " " + *group.member("folderName")->asString() + ":";
      for (const JsonValue& asset : *group.member("assets")->asArray()) {
        text += " " + asset.asString()->substr(0, asset.asString()->find('.'));
      }
    }
    return text;
  }

  CommandTester tester;
};

TEST_F(GroupCommands, modes_haveTheirIDsMergesAndNames) {
  const std::string merges =
      R"(mergesByMode={"trips":[["trip-2026-05-10","month-2026-05","gone"]],)"
      R"("events":[["event-2026-04-10","event-2026-04-01"]]})";
  const std::string trip = "trip-2026-05-10";
  struct Row {
    std::vector<std::string> settings;
    std::string expected;
  };
  const std::vector<Row> rows{
      {{"uiMode=trips"},
       "month-2026-04 2026-04-01: H1 H2 H3 H4; trip-2026-05-10 2026-05-10: R1 R2 X1 R3; "
       "month-2026-05 2026-05-12: N1 X2; no-date No date: U"},
      {{"uiMode=trips", merges,
        R"(nameOverrides={"merge:gone+month-2026-05+trip-2026-05-10":"Италия",)"
        R"("trip-2026-05-10":"Рим"})"},
       "month-2026-04 2026-04-01: H1 H2 H3 H4; merge:gone+month-2026-05+trip-2026-05-10 Италия: "
       "R1 R2 X1 R3 N1 X2; no-date No date: U"},
      {{"uiMode=trips", R"(nameOverrides={"trip-2026-05-10":"Рим"})", "tripMinDays=3"},
       "month-2026-04 2026-04-01: H1 H2 H3 H4; trip-2026-05-10 Рим: R1 R2 X1 R3; "
       "month-2026-05 2026-05-12: N1 X2; no-date No date: U"},
      {{merges, "eventGapHours=24", "splitByDistance=false"},
       "merge:event-2026-04-01+event-2026-04-10 2026-04-01: H1 H2; event-2026-04-20 2026-04-20: "
       "H3; event-2026-04-30 2026-04-30: H4; event-2026-05-10 2026-05-10: R1 R2 X1 R3 N1; "
       "event-2026-05-15 2026-05-15: X2; no-date No date: U"},
      {{"uiMode=byDate", "granularity=year", merges},
       "2026 2026-04-01: H1 H2 H3 H4 R1 R2 X1 R3 N1 X2; no-date No date: U"},
  };
  for (const Row& row : rows) EXPECT_EQ(shape(row.settings), row.expected);
}

TEST_F(GroupCommands, json_hasChildrenAndHomeCandidates) {
  const JsonValue json =
      groups({"uiMode=trips", R"(mergesByMode={"trips":[["no-date","month-2026-05"]]})"},
             {"--json"})
          .json();
  EXPECT_EQ(*json.member("groups")->asArray()->at(2).member("children"),
            parseJson(R"(["month-2026-05","no-date"])"));
  EXPECT_EQ(*json.member("homeIsAmbiguous"), parseJson("true"));
  const auto& candidates = *json.member("homeCandidates")->asArray();
  ASSERT_EQ(candidates.size(), 3U);
  EXPECT_EQ(*candidates[0].member("recentDays"), parseJson("4"));
  EXPECT_EQ(*candidates[1].member("lastDate"), parseJson(R"("2026-05-12T12:00:00Z")"));
  EXPECT_EQ(json.member("explanation"), nullptr);
  EXPECT_EQ(*groups({}, {"--json"}).json().member("homeCandidates"), parseJson("[]"));
}

TEST_F(GroupCommands, home_isToldWithItsRivals) {
  const std::string russian = groups({"uiMode=trips"}).out;
  EXPECT_THAT(
      russian,
      HasSubstr("\nДом: 55.75, 37.62 — дней: 4 (недавних: 4)\n"
                "Дом — место, где снимали больше всего дней из недавних (последние 180 дней до "
                "самого нового снимка с местом); при равенстве решают все дни, затем число "
                "снимков, затем, где начали снимать раньше.\n"
                "Несколько вариантов дома — проверьте выбор\n"
                "  55.75, 37.62 — дней: 4 (недавних: 4)\n"
                "  41.90, 12.50 — дней: 3 (недавних: 3)\n"
                "Указать другой дом: --set homeOverride=41.90000,12.50000\n"));
  EXPECT_THAT(groups({"uiMode=trips", "homeWindowMonths=0"}, {"--lang", "en"}).out,
              AllOf(HasSubstr("Home: 55.75, 37.62 — days: 4 (recent: 0)\n"),
                    HasSubstr("Home is the place with shots on the largest number of days;"),
                    HasSubstr("Next by this count: 41.90, 12.50"), Not(HasSubstr("Several"))));
  EXPECT_THAT(
      groups({"uiMode=trips", "homeOverride=41.9,12.5", "homeOverrideName=Вилла"}).out,
      AllOf(HasSubstr("Дом указан вручную: Вилла (41.90, 12.50)\n"
                      "Автоматически выбран был бы: 55.75, 37.62 — дней: 4 (недавних: 4)\n"),
            Not(HasSubstr("Несколько"))));
  EXPECT_THAT(groups({}).out, Not(HasSubstr("Дом")));
  EXPECT_THAT(tester.run({"plan", "phone", "photos", "--set", "uiMode=trips"}).out,
              HasSubstr("Несколько вариантов дома — проверьте выбор"));
  tester.addPhone("[" + entry("A.JPG", "2026:05:15 12:00:00", "") + "]");
  EXPECT_THAT(
      groups({"uiMode=trips"}, {"--explain"}).out,
      AllOf(HasSubstr("\nДом не определён: нет геоданных\n"), Not(HasSubstr("вдали от дома\n"))));
}

TEST_F(GroupCommands, homesOfAnOwnerWhoMoved_areListedWithTheirDays) {
  std::string shots;
  for (int month = 1; month <= 12; ++month) {
    for (const int day : {1, 11, 21}) {
      const std::string date = fmt::format("2025:{:02}:{:02} 12:00:00", month, day);
      const std::string name = fmt::format("{:02}{:02}.JPG", month, day);
      const auto& place = month <= 4 ? moscow : month <= 8 ? rome : naples;
      shots += (shots.empty() ? "[" : ",") + entry(name, date, place);
    }
  }
  tester.addPhone(shots + "]");
  const std::vector<std::string> moved{"uiMode=trips", "tripMaxGapHours=300", "homePeriods=true"};
  EXPECT_THAT(groups(moved).out, HasSubstr("\nДома:\n"
                                           "  55.75, 37.62 — до 2025-04-21\n"
                                           "  41.90, 12.50 — с 2025-05-01 по 2025-08-21\n"
                                           "  40.85, 14.27 — с 2025-09-01\n"
                                           "Новый дом — место не ближе 50 км от прежнего"));
  EXPECT_THAT(groups(moved, {"--lang", "en"}).out,
              AllOf(HasSubstr("\nHomes:\n  55.75, 37.62 — until 2025-04-21\n"
                              "  41.90, 12.50 — from 2025-05-01 to 2025-08-21\n"
                              "  40.85, 14.27 — since 2025-09-01\n"),
                    Not(HasSubstr("Several"))));
  EXPECT_EQ(shape(moved).find("trip-"), std::string::npos);
  EXPECT_NE(shape({moved[0], moved[1]}).find("trip-"), std::string::npos);
  const JsonValue json = groups(moved, {"--json"}).json();
  const auto& homes = *json.member("homePeriods")->asArray();
  ASSERT_EQ(homes.size(), 3U);
  EXPECT_EQ(*homes[1].member("firstDay")->asString(), "2025-05-01");
  EXPECT_EQ(*homes[1].member("lastDay")->asString(), "2025-08-21");
}

TEST_F(GroupCommands, placeThatIsNowhereOnEarth_countsAsNone) {
  const std::string nowhere = R"("lat":1e308,"lon":1e308)";
  tester.addPhone("[" + entry("A.JPG", "2026:04:01 10:00:00", nowhere) + "," +
                      entry("B.JPG", "2026:04:02 10:00:00", R"("lat":55.75,"lon":37.62)") + "," +
                      entry("C.JPG", "2026:04:03 10:00:00", R"("lat":95,"lon":500)") + "]",
                  {"A.JPG", "B.JPG", "C.JPG"});
  EXPECT_THAT(groups({"uiMode=trips"}, {"--explain"}).out,
              AllOf(HasSubstr("Дом: 55.75, 37.62 — дней: 1"), Not(HasSubstr("nan"))));
  EXPECT_THAT(groups({"uiMode=trips"}, {"--json"}).out, Not(HasSubstr("null")));
  tester.run({"transfer", "phone", "photos", "--set", "uiMode=trips"});
  EXPECT_EQ(tester.run({"history", "last"}).status, ExitStatus::done);
}

TEST_F(GroupCommands, mergedFolders_areMarked) {
  EXPECT_THAT(
      groups({"uiMode=trips", R"(mergesByMode={"trips":[["trip-2026-05-10","month-2026-05"]]})"})
          .out,
      AllOf(HasSubstr("Пометки\n"), HasSubstr("  Склеено из 2 папок\n")));
  EXPECT_THAT(groups({R"(mergesByMode={"events":[["event-2026-04-01","event-2026-04-10"]]})"}).out,
              HasSubstr("  События внутри: 2\n"));
}

TEST_F(GroupCommands, transfer_putsTripsIntoTheirFolders) {
  tester.addPhone(travels, {"H1.JPG", "H2.JPG", "H3.JPG", "H4.JPG", "R1.JPG", "R2.JPG", "X1.JPG",
                            "R3.JPG", "N1.JPG", "X2.JPG", "U.JPG"});
  const std::vector<std::string> call{"transfer",
                                      "phone",
                                      "photos",
                                      "--set",
                                      "uiMode=trips",
                                      "--set",
                                      R"(nameOverrides={"trip-2026-05-10":"Рим"})"};
  EXPECT_EQ(tester.run(call).status, ExitStatus::done);
  EXPECT_TRUE(tester.folder.has("photos/Рим/X1.JPG"));
  EXPECT_TRUE(tester.folder.has("photos/2026-05-12/N1.JPG"));
  EXPECT_THAT(tester.run(call).out, HasSubstr("Переносить нечего"));
}

TEST_F(GroupCommands, table_hasOneColumnOfDaysAndTheFolderThatAPlanHas) {
  const std::string trips = groups({"uiMode=trips", "homeRadiusKm=3000"}).out;
  EXPECT_THAT(trips, HasSubstr("  Даты\n"));
  EXPECT_THAT(trips, HasSubstr("  2026-04-01…30\n"));
  EXPECT_THAT(trips, HasSubstr("  2026-05-12…15\n"));
  EXPECT_THAT(groups({"eventGapHours=480", "splitByDistance=false"}).out,
              HasSubstr("  2026-04-01…05-15\n"));
  const auto plan = tester.run({"plan", "phone", "photos", "--set", "uiMode=flat"});
  const std::string inDestination = "(прямо в папке назначения)";
  EXPECT_THAT(plan.out, HasSubstr(inDestination));
  EXPECT_THAT(groups({"uiMode=flat"}).out, HasSubstr(inDestination));
  EXPECT_THAT(shape({"uiMode=flat", R"(nameOverrides={"flat":"Mine"})"}),
              testing::StartsWith("flat : H1"));
  EXPECT_TRUE(plan.err.empty());
}

TEST_F(GroupCommands, explainOfTrips_tellsOfStaysAndOfEveryShotOutside) {
  EXPECT_THAT(
      groups({"uiMode=trips"}, {"--explain"}).out,
      HasSubstr(
          "2026-05-10–2026-05-12, возле 41.90, 12.50 (2\u00A0375\u00A0км от дома), 4 снимка\n"
          "  поездка «2026-05-10»: 3 дня ≥ 2\n"
          "  началось: 2\u00A0375\u00A0км от дома > 100\u00A0км\n"
          "  закончилось: дальше новый город: 188\u00A0км от центра этого пребывания > 50\u00A0км\n"
          "2026-05-12, возле 40.85, 14.27 (2\u00A0372\u00A0км от дома), 1 снимок\n"
          "  вылазка, её снимки лежат в папке месяца: 1 день < 2\n"
          "  началось: новый город: 188\u00A0км от центра предыдущего пребывания > 50\u00A0км\n"
          "  закончилось: дальше нет снимков с местом\n"));
  const std::string counted = groups({"uiMode=trips"}, {"--explain", "--lang", "en"}).out;
  EXPECT_THAT(counted, HasSubstr(" 4  not away from home: the farthest 0\u00A0km ≤ 100\u00A0km\n"));
  EXPECT_THAT(counted, Not(HasSubstr("H1.JPG")));
  const std::string english = groups({"uiMode=trips"}, {"--explain=all", "--lang", "en"}).out;
  for (const std::string line : {
           "H1.JPG  2026-04-01 12:00:00  not away from home: 0\u00A0km ≤ 100\u00A0km\n",
           "N1.JPG  2026-05-12 15:00:00  outing of 2026-05-12: 1 day < 2\n",
           "X2.JPG  2026-05-15 12:00:00  the shot has no place\n",
           "U.JPG   —                    the capture date is unknown\n",
           "  trip “2026-05-10”: 3 days ≥ 2\n",
       }) {
    EXPECT_THAT(english, HasSubstr(line));
  }
  EXPECT_THAT(english, Not(HasSubstr("R1.JPG")));
}

TEST_F(GroupCommands, suggestion_isAcceptedForGood_orNeverMadeAgain) {
  const std::string back = travels.substr(0, travels.size() - 1) + "," +
                           entry("R4.JPG", "2026:05:13 12:00:00", rome) + "," +
                           entry("R5.JPG", "2026:05:14 12:00:00", rome) + "]";
  tester.addPhone(back);
  const std::vector<std::string> trips{"uiMode=trips", "homeOverride=55.75,37.62"};
  const std::string question = "2026-05-10: 2 поездки и вылазка — одна папка?\n";
  EXPECT_THAT(groups(trips).out, HasSubstr(question));
  const std::string ids = R"(["trip-2026-05-10","outing-2026-05-12","trip-2026-05-13"])";
  const std::string rejected = R"(rejectedSuggestions={"trips":[)" + ids + "]}";
  EXPECT_THAT(groups({trips[0], trips[1], rejected}).out, Not(HasSubstr(question)));

  const std::string accepted = groups(trips, {"--accept-suggestions"}).out;
  EXPECT_THAT(accepted, HasSubstr("Склеено и запомнено: 1 склейка."));
  EXPECT_THAT(accepted, Not(HasSubstr(question)));
  EXPECT_THAT(shape(trips),
              HasSubstr("merge:outing-2026-05-12+trip-2026-05-10+trip-2026-05-13 2026-05-10: R1 R2 "
                        "X1 R3 N1 R4 R5"));
  EXPECT_THAT(groups(trips, {"--explain"}).out,
              HasSubstr("  вылазка, склеена в папку «2026-05-10»: 1 день < 2\n"));
  EXPECT_THAT(groups(trips, {"--accept-suggestions"}).out, HasSubstr("Склеивать нечего"));
}

TEST_F(GroupCommands, foldersOfMonths_areOfferedNamesWithoutADay) {
  const std::vector<std::string> months{"uiMode=byDate", "granularity=month"};
  EXPECT_THAT(groups(months).out, HasSubstr("Чтобы было «2026-04», а не «2026-04-01»: --set "
                                            "wholeFolderDates=true\n"));
  const std::string whole =
      groups({"uiMode=byDate", "granularity=month", "wholeFolderDates=true"}).out;
  EXPECT_THAT(whole, HasSubstr("\n2026-05  "));
  EXPECT_THAT(whole, Not(HasSubstr("wholeFolderDates")));
  EXPECT_THAT(groups({"uiMode=byDate"}).out, Not(HasSubstr("wholeFolderDates")));
}

TEST_F(GroupCommands, cameraDays_areSaidAndUsedEverywhere) {
  const std::vector<std::string> inAuckland{"uiMode=byDate", "timeZoneID=Pacific/Auckland"};
  EXPECT_THAT(shape(inAuckland), HasSubstr("2026-05-12 2026-05-12: R2 X1; "));
  auto byCamera = inAuckland;
  byCamera.emplace_back("cameraDays=true");
  EXPECT_THAT(shape(byCamera), HasSubstr("2026-05-11 2026-05-11: R2 X1; "));
  const std::string explained = groups(byCamera, {"--explain"}).out;
  EXPECT_THAT(explained, HasSubstr("по часовому поясу Pacific/Auckland.\n"));
  // The time is left out with the first shot.
  const std::string merged = R"(mergesByMode={"byDate":[["2026-05-10","2026-05-11","no-date"]]})";
  auto part = byCamera;
  part.push_back(merged);
  EXPECT_THAT(groups(part, {"--explain", "--exclude", "R1.JPG"}).out,
              HasSubstr("  2026-05-10           "));
  EXPECT_THAT(explained, HasSubstr("2026-05-11 12:00:00  день 2026-05-11\n"));
  EXPECT_THAT(groups(byCamera, {"--json"}).out, HasSubstr(R"("firstDay": "2026-05-11",)"));
}

TEST_F(GroupCommands, explainOfOtherModes_tellsOfEveryFolder) {
  const std::string events = groups({"eventGapHours=30"}, {"--explain", "--lang", "en"}).out;
  EXPECT_THAT(events, AllOf(HasSubstr("2026-04-01 12:00:00  the earliest of these shots\n"),
                            HasSubstr("2026-04-10 12:00:00  pause of 9\u00A0d > 30\u00A0h\n"),
                            HasSubstr("2026-05-12 15:00:00  jump of 188\u00A0km > 30\u00A0km\n"),
                            HasSubstr("2026-05-15 12:00:00  pause of 69\u00A0h > 30\u00A0h\n")));
  EXPECT_THAT(groups({"uiMode=byDate", "granularity=month"}, {"--explain"}).out,
              AllOf(HasSubstr("часового пояса UTC"), HasSubstr("месяц 2026-05\n"),
                    HasSubstr("дата съёмки неизвестна")));
  EXPECT_THAT(groups({"uiMode=flat"}, {"--explain"}).out, HasSubstr("делить нечего"));
  EXPECT_THAT(
      groups({R"(mergesByMode={"events":[["event-2026-04-01","event-2026-04-10"]]})"},
             {"--explain"})
          .out,
      AllOf(HasSubstr("События внутри: 2\n  event-2026-04-01  2026-04-01 12:00:00  самый ранний"),
            HasSubstr("\n  event-2026-04-10  2026-04-10 12:00:00  пауза 9\u00A0дн. > 4\u00A0ч\n")));
}

/// Returns the text in docs/grouping.md between a fence and the next one.
std::string groupingExample(const std::string& fence) {
  std::ifstream file{std::string{TAVRIX_DOCS} + "/grouping.md"};
  const std::string text{std::istreambuf_iterator<char>{file}, {}};
  const std::size_t begin = text.find("\n" + fence + "\n") + fence.size() + 2;
  return text.substr(begin, text.find("```", begin) - begin);
}

/// Scales every number by 1000 and rounds it.
JsonValue rounded(JsonValue json) {
  if (const auto number = json.asNumber()) return {std::round(*number * 1000)};
  if (auto* const array = std::get_if<JsonValue::Array>(&json.data)) {
    for (JsonValue& item : *array) item = rounded(item);
  }
  if (auto* const object = std::get_if<JsonValue::Object>(&json.data)) {
    for (auto& [key, value] : *object) value = rounded(value);
  }
  return json;
}

TEST_F(GroupCommands, documentation_saysWhatIsPrinted) {
  tester.addPhone("[" + entry("IMG_0001.JPG", "2026:05:10 12:00:00", rome) + "," +
                  entry("IMG_0002.JPG", "2026:05:11 12:00:00", rome) + "," +
                  entry("IMG_0003.JPG", "2026:05:12 12:00:00", "") + "]");
  std::vector<std::string> settings{"uiMode=trips", "homeOverride=55.75,37.62"};
  const CommandResult explained = groups(settings, {"--json", "--explain"});
  EXPECT_EQ(rounded(*explained.json().member("explanation")),
            rounded(parseJson(groupingExample("```json"))))
      << explained.out;
  std::istringstream lines{groupingExample("```")};
  for (std::string line; std::getline(lines, line);) settings.push_back(line);
  EXPECT_EQ(shape(settings),
            "merge:month-2026-05+trip-2026-05-10 Italy: IMG_0001 IMG_0002 IMG_0003");
}

}  // namespace
}  // namespace tavrix::cli
