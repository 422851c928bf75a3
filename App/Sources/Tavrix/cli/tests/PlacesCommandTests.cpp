#include <fmt/format.h>

#include <filesystem>

#include "cli/commands/Commands.h"
#include "cli/tests/CommandTester.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// A day each in Rome, in Brooklyn, in Sergiyev Posad and on the open sea, and one without a
/// position.
const std::string travelsWithPlaces = R"([
  {"name":"R1.JPG","kind":"photo","size":10,"exifDate":"2026:05:01 12:00:00","exifOffset":"+00:00","lat":41.8902,"lon":12.4922},
  {"name":"R2.JPG","kind":"photo","size":10,"exifDate":"2026:05:01 13:00:00","exifOffset":"+00:00","lat":41.8905,"lon":12.4925},
  {"name":"B.JPG","kind":"photo","size":10,"exifDate":"2026:05:02 12:00:00","exifOffset":"+00:00","lat":40.6501,"lon":-73.9496},
  {"name":"S.JPG","kind":"photo","size":10,"exifDate":"2026:05:03 12:00:00","exifOffset":"+00:00","lat":56.3103,"lon":38.13},
  {"name":"O.JPG","kind":"photo","size":10,"exifDate":"2026:05:04 12:00:00","exifOffset":"+00:00","lat":30,"lon":-40},
  {"name":"N.JPG","kind":"photo","size":10,"exifDate":"2026:05:05 12:00:00","exifOffset":"+00:00"}
])";

class PlacesCommand : public testing::Test {
 protected:
  PlacesCommand() {
    tester.gazetteerPath = TAVRIX_RESOURCES "/gazetteer.bin";
    tester.addPhone(travelsWithPlaces, {"R1.JPG", "R2.JPG", "B.JPG", "S.JPG", "O.JPG", "N.JPG"});
  }

  std::vector<std::string> folders(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"groups", "phone", "--json"});
    const CommandResult result = tester.run(options);
    EXPECT_EQ(result.status, ExitStatus::done) << result.err;
    std::vector<std::string> names;
    const JsonValue json = result.json();
    for (const JsonValue& group : *json.member("groups")->asArray()) {
      names.push_back(*group.member("folderName")->asString());
    }
    return names;
  }

  CommandTester tester;
};

using Names = std::vector<std::string>;

TEST_F(PlacesCommand, folders_areNamedAfterCitiesInTheTemplatesLanguage) {
  EXPECT_EQ(folders(), (Names{"2026-05-01 — Rome", "2026-05-02 — Brooklyn",
                              "2026-05-03 — Sergiyev Posad", "2026-05-04", "2026-05-05"}));
  tester.localeID = "ru_RU";
  EXPECT_EQ(folders(), (Names{"2026-05-01 — Рим", "2026-05-02 — Бруклин",
                              "2026-05-03 — Сергиев Посад", "2026-05-04", "2026-05-05"}));
  EXPECT_EQ(folders({"--set", "mergeDistricts=true"})[1], "2026-05-02 — Нью-Йорк");
  EXPECT_EQ(folders({"--set", "geocodingEnabled=false"})[0], "2026-05-01");
  const std::string withCountry =
      R"(nameTemplate={"tokens":[{"city":{"_0":"upper"}},{"literal":{"_0":", "}},{"country":{"_0":"name","_1":"asIs"}},{"literal":{"_0":" "}},{"country":{"_0":"code","_1":"asIs"}}],"language":"russian"})";
  tester.localeID = "en_US";
  EXPECT_EQ(folders({"--set", withCountry})[0], "РИМ, Италия IT");
}

TEST_F(PlacesCommand, folders_areNamedAfterTheQuarterInWhichMostShotsAre) {
  const auto shot = [](const char* name, int day, double latitude, double longitude) {
    return fmt::format(
        R"({{"name":"{}.JPG","kind":"photo","size":10,"exifDate":"2026:06:{:02} 12:00:00","exifOffset":"+00:00","lat":{},"lon":{}}})",
        name, day, latitude, longitude);
  };
  // An evening in one quarter of Melbourne, a day in several, and one in Barcelona.
  tester.addPhone("[" + shot("F1", 1, -37.799, 144.9784) + "," + shot("F2", 1, -37.7992, 144.9780) +
                      "," + shot("W1", 2, -37.799, 144.9784) + "," +
                      shot("W2", 2, -37.8678, 144.9768) + "," + shot("G", 3, 41.38, 2.189) + "]",
                  {"F1.JPG", "F2.JPG", "W1.JPG", "W2.JPG", "G.JPG"});
  tester.localeID = "en_US";
  EXPECT_EQ(folders(), (Names{"2026-06-01 — Fitzroy", "2026-06-02 — Melbourne",
                              "2026-06-03 — La Barceloneta"}));
  EXPECT_EQ(folders({"--set", "mergeDistricts=true"}),
            (Names{"2026-06-01 — Melbourne", "2026-06-02 — Melbourne", "2026-06-03 — Barcelona"}));
  EXPECT_EQ(folders({"--set", "places=Melbourne"}),
            (Names{"2026-06-01 — Fitzroy", "2026-06-02 — Melbourne"}))
      << "the choice of places is by city";
  EXPECT_THAT(tester.run({"places", "phone"}).out,
              AllOf(HasSubstr("Мельбурн"), Not(HasSubstr("Фицрой"))));
  tester.localeID = "ru_RU";
  EXPECT_EQ(folders()[0], "2026-06-01 — Фицрой");
  EXPECT_EQ(folders()[2], "2026-06-03 — Барселонета");
}

/// Returns the catalogue of an event: the first three shots in the Vatican, the others in Rome.
std::string eventOf(int shots) {
  std::string json = "[";
  for (int i = 1; i <= shots; ++i) {
    const std::string place =
        i <= 3 ? R"("lat":41.9022,"lon":12.4533)" : R"("lat":41.89,"lon":12.49)";
    json += (i > 1 ? "," : "") + (R"({"name":"E)" + std::to_string(i)) +
            R"(.JPG","kind":"photo","size":10,"exifDate":"2026:05:09 10:)" +
            std::to_string(10 + i) + R"(:00",)" + place + "}";
  }
  return json + "]";
}

TEST_F(PlacesCommand, eventThatGrows_keepsItsFolderUntilItsNamesAreMadeAnotherWay) {
  tester.localeID = "en_US";
  std::vector<std::string> media;
  for (int i = 1; i <= 11; ++i) media.push_back("E" + std::to_string(i) + ".JPG");
  tester.addPhone(eventOf(3), media);
  tester.run({"transfer", "phone", "photos"});
  tester.addPhone(eventOf(11), media);

  const std::vector<std::string> plan{"plan", "phone", "photos", "--lang", "en"};
  EXPECT_THAT(tester.run(plan).out,
              AllOf(StartsWith("Folder                     New  Size  Already there\n"
                               "2026-05-09 — Vatican City    8"),
                    HasSubstr("Continues a folder: “2026-05-09 — Vatican City” (the template "
                              "gives “2026-05-09 — Rome”).")));
  auto call = plan;
  call.insert(call.end(), {"--set", "eventGapHours=5"});
  EXPECT_THAT(
      tester.run(call).err,
      AllOf(HasSubstr("copied again under new names: 3 files."),
            HasSubstr("since these folders were named: eventGapHours."),
            HasSubstr("To keep the names as they were: tavrix transfer … --set eventGapHours=4")));
  call.back() = "continueFolders=false";
  EXPECT_THAT(tester.run(call).out, HasSubstr("2026-05-09 — Rome   11"));

  EXPECT_THAT(tester.run({"transfer", "phone", "photos"}).err, IsEmpty());
  EXPECT_TRUE(tester.folder.has("photos/2026-05-09 — Vatican City/E11.JPG"));
  EXPECT_FALSE(tester.folder.has("photos/2026-05-09 — Rome"));
}

TEST_F(PlacesCommand, homeAndStays_haveTheNamesOfTheirPlaces) {
  const std::vector<std::string> call{"groups", "phone", "--explain", "--set", "uiMode=trips"};
  auto english = call;
  english.insert(english.end(), {"--lang", "en"});
  EXPECT_THAT(
      tester.run(call).out,
      AllOf(HasSubstr("Дом: Рим — дней: 1 (недавних: 1)\n"),
            HasSubstr("\n2026-05-03, Сергиев Посад (2\u00A0435\u00A0км от дома), 1 снимок\n"),
            HasSubstr("\n2026-05-04, возле 30.00, -40.00 (")));
  EXPECT_THAT(tester.run(english).out,
              AllOf(HasSubstr("Home: Rome — days: 1"), HasSubstr("\n2026-05-02, Brooklyn ("),
                    HasSubstr("\n2026-05-04, near 30.00, -40.00 (")));
  // A trip of the home's own name, from plan as well.
  EXPECT_THAT(tester
                  .run({"plan", "phone", "photos", "--set", "uiMode=trips", "--set",
                        "homeOverride=56.31,38.13"})
                  .out,
              HasSubstr("Дом указан вручную: Сергиев Посад (56.31, 38.13)"));
}

TEST_F(PlacesCommand, onlyFolder_isFoundByEveryNameThatItHas) {
  tester.localeID = "en_US";
  std::vector<std::string> media;
  for (int i = 1; i <= 11; ++i) media.push_back("E" + std::to_string(i) + ".JPG");
  tester.addPhone(eventOf(3), media);
  tester.run({"transfer", "phone", "photos"});
  tester.addPhone(eventOf(11), media);
  for (const std::string name :
       {"2026-05-09 — rome", "2026-05-09 — VATICAN City", "event-2026-05-09"}) {
    const CommandResult result = tester.run({"plan", "phone", "photos", "--json", "--only", name});
    EXPECT_EQ(result.status, ExitStatus::done) << name << result.err;
    EXPECT_EQ(result.json().member("files")->asArray()->size(), 8U) << name;
  }
  // The last days of the event go into the folder that it has.
  tester.time += std::chrono::hours{24};
  EXPECT_EQ(
      tester.run({"transfer", "phone", "photos", "--only", "2026-05-09 — Vatican City"}).status,
      ExitStatus::done);
  EXPECT_TRUE(tester.folder.has("photos/2026-05-09 — Vatican City/E11.JPG"));
}

TEST_F(PlacesCommand, placesSetting_keepsTheChosenCountriesAndCities) {
  struct Row {
    std::string value;
    Names expected;
  };
  const std::vector<Row> rows{
      {"Italy, Brooklyn", {"2026-05-01 — Rome", "2026-05-02 — Brooklyn"}},
      {"Рим,Россия", {"2026-05-01 — Rome", "2026-05-03 — Sergiyev Posad"}},
      {"rOME, РОССИя", {"2026-05-01 — Rome", "2026-05-03 — Sergiyev Posad"}},
      {"it,сша", {"2026-05-01 — Rome", "2026-05-02 — Brooklyn"}},
      {"Roma", {}},
      {R"({"cities":["Рим"],"includeUnplaced":true})", {"2026-05-01 — Rome", "2026-05-05"}},
      {R"({"countries":["Италия","us"],"localeID":"en_US"})", {"2026-05-02 — Brooklyn"}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(folders({"--set", "places=" + row.value}), row.expected) << row.value;
  }
  EXPECT_EQ(folders({"--set", "places=New York City", "--set", "mergeDistricts=true"}),
            Names{"2026-05-02 — New York City"});
  EXPECT_EQ(tester.run({"groups", "phone", "--set", "places=италия, rome, us"}).err, "");
  const CommandResult typo = tester.run({"places", "phone", "--set", "places=Rom, Brooklyn"});
  EXPECT_EQ(typo.status, ExitStatus::done);
  EXPECT_THAT(typo.err, AllOf(HasSubstr("places: Rom."), HasSubstr("Italy (Rome)"),
                              HasSubstr("Russia (Sergiyev Posad)"), Not(HasSubstr("Sea"))));
  const CommandResult kinds = tester.run({"groups", "phone", "--lang", "en", "--set",
                                          R"(places={"countries":["Rome"],"cities":["Italy"]})"});
  EXPECT_THAT(kinds.err, HasSubstr("check the names in places: Italy, Rome."));
  const CommandResult nameless =
      tester.run({"groups", "phone", "--set", "places=Рим", "--set", "geocodingEnabled=false"});
  EXPECT_THAT(nameless.err, HasSubstr("включите geocodingEnabled"));
  for (const std::string bad : {"", " , ", "{", R"({"towns":[]})", R"({"cities":"Рим"})"}) {
    const CommandResult result = tester.run({"groups", "phone", "--set", "places=" + bad});
    EXPECT_EQ(result.status, ExitStatus::usage) << bad;
    EXPECT_THAT(result.err, AllOf(HasSubstr("places"), HasSubstr("includeUnplaced"))) << bad;
  }
}

TEST_F(PlacesCommand, places_showNamesAndTheTree) {
  const std::string text = tester.run({"places", "phone"}).out;
  EXPECT_THAT(text, AllOf(HasSubstr("Рим"), HasSubstr("Сергиев Посад"), HasSubstr("\nИталия"),
                          HasSubstr("\n  Бруклин"), HasSubstr("\nБез места"),
                          HasSubstr("\nБез страны"), Not(HasSubstr("определяется"))));
  EXPECT_THAT(tester.run({"places", "phone", "--lang", "en"}).out,
              AllOf(HasSubstr("Rome"), HasSubstr("\nUnited States"), HasSubstr("\n  Brooklyn")));
  const JsonValue json = tester.run({"places", "phone", "--json"}).json();
  const JsonValue& rome = json.asArray()->at(0);
  EXPECT_EQ(*rome.member("names")->member("ru")->member("city")->asString(), "Рим");
  EXPECT_EQ(*rome.member("names")->member("en")->member("countryName")->asString(), "Italy");
  EXPECT_EQ(json.asArray()->at(3).member("names")->member("en")->asObject()->size(), 0U);
  EXPECT_THAT(tester.run({"places", "phone", "--set", "geocodingEnabled=false"}).out,
              Not(HasSubstr("Рим")));
}

TEST_F(PlacesCommand, names_areKeptInTheStateFolderUntilReset) {
  const std::string cache = "state/Tavrix/state/geocache.json";
  tester.run({"plan", "phone", "photos"});
  EXPECT_FALSE(tester.folder.has(cache)) << "a plan writes nothing";
  tester.run({"groups", "phone"});
  ASSERT_TRUE(tester.folder.has(cache));
  std::string kept = tester.folder.read(cache);
  EXPECT_THAT(kept, AllOf(HasSubstr("Рим"), HasSubstr("Rome")));
  kept.replace(kept.find("Rome"), 4, "Roma");
  tester.folder.write(cache, kept);
  EXPECT_EQ(folders()[0], "2026-05-01 — Roma") << "what is kept is not looked up again";
  tester.folder.write(cache, "damaged");
  EXPECT_EQ(folders()[0], "2026-05-01 — Rome");
  EXPECT_EQ(*tester.run({"geocache", "reset", "--json"}).json().member("removed"), parseJson("1"));
  EXPECT_FALSE(tester.folder.has(cache));
  EXPECT_THAT(tester.run({"geocache", "reset"}).out, StartsWith("Забывать нечего"));
}

TEST_F(PlacesCommand, records_keepTheNamesInBothLanguages) {
  ASSERT_EQ(tester.run({"transfer", "phone", "photos"}).status, ExitStatus::done);
  EXPECT_TRUE(tester.folder.has("photos/2026-05-01 — Rome/R1.JPG"));
  const JsonValue record = tester.run({"history", "last", "--json"}).json();
  const auto& folders = *record.member("folders")->asArray();
  const JsonValue& place = *folders.at(0).member("place");
  EXPECT_EQ(*place.member("names")->member("ru")->asString(), "Рим");
  EXPECT_EQ(*place.member("names")->member("en")->asString(), "Rome");
  EXPECT_EQ(*place.member("countryCode")->asString(), "IT");
  EXPECT_TRUE(folders.at(3).member("place")->member("names")->asObject()->empty());
  EXPECT_EQ(folders.at(4).member("place"), nullptr);
  EXPECT_EQ(tester.run({"transfer", "phone", "photos"}).status, ExitStatus::done);
}

TEST_F(PlacesCommand, tableThatDoesNotOpen_isToldAndFoldersGoWithoutCities) {
  const std::vector<std::pair<std::string, std::string>> rows{
      {"missing.bin", "не открывается"}, {"phone/snapshot.json", "это не таблица мест (байт 0)"}};
  for (const auto& [file, reason] : rows) {
    tester.gazetteerPath = tester.folder / file;
    const CommandResult result = tester.run({"groups", "phone"});
    EXPECT_EQ(result.status, ExitStatus::done);
    EXPECT_THAT(result.err, AllOf(HasSubstr(file), HasSubstr(reason)));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_THAT(result.out, AllOf(HasSubstr("2026-05-01"), Not(HasSubstr("Rome"))));
  }
  EXPECT_THAT(tester.run({"groups", "phone", "--set", "geocodingEnabled=false"}).err, IsEmpty());
  // A folder that is asked for by its city is unknown without the table, which is said first.
  const CommandResult failed = tester.run({"groups", "phone", "--only", "2026-05-01 — Rome"});
  EXPECT_NE(failed.status, ExitStatus::done);
  EXPECT_LT(failed.err.find("это не таблица мест"), failed.err.find("— Rome")) << failed.err;
}

TEST_F(PlacesCommand, version_namesTheSourceOfTheNames) {
  EXPECT_THAT(tester.run({"--version"}).out, AllOf(HasSubstr("GeoNames"), HasSubstr("CC BY 4.0")));
}

}  // namespace
}  // namespace tavrix::cli
