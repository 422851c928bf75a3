#include "cli/tests/CommandTester.h"
#include "foundation/files/FileReader.h"
#include "media/Snapshot.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// Returns the member at a path such as "groups/0/id".
const JsonValue& at(const JsonValue& json, const std::string& path) {
  const JsonValue* value = &json;
  for (std::size_t begin = 0; begin <= path.size();) {
    const std::size_t end = std::min(path.find('/', begin), path.size());
    const std::string part = path.substr(begin, end - begin);
    value =
        value->asArray() != nullptr ? &value->asArray()->at(std::stoul(part)) : value->member(part);
    if (value == nullptr) throw std::out_of_range{path};
    begin = end + 1;
  }
  return *value;
}

struct ListCommands : testing::Test {
  ListCommands() { tester.addPhone(smallSnapshot, smallMedia); }

  void expectJson(const std::vector<std::string>& arguments, const std::string& path,
                  const std::string& expected) const {
    std::vector<std::string> call = arguments;
    call.emplace_back("--json");
    const CommandResult result = tester.run(call);
    EXPECT_EQ(result.status, ExitStatus::done) << result.err;
    const JsonValue json = result.json();
    EXPECT_EQ(path.empty() ? json : at(json, path), parseJson(expected)) << result.out;
    call.insert(call.end(), {"--lang", "en"});
    EXPECT_EQ(tester.run(call).out, result.out);
  }

  CommandTester tester;
};

TEST_F(ListCommands, json_hasTheFieldsOfTheModel) {
  struct Row {
    std::vector<std::string> arguments;
    std::string path;
    std::string expected;
  };
  const std::vector<Row> rows{
      {{"catalog", "phone"},
       "0",
       R"({"id":"100APPLE/IMG_0001.HEIC","name":"IMG_0001.HEIC","directory":"100APPLE",
           "kind":"photo","sizeBytes":10,"captureDate":"2026-05-20T12:00:00Z","dateSource":"metadata",
           "location":{"latitude":41.9,"longitude":12.5},"isOptimized":false,
           "isEditedVariant":false})"},
      {{"catalog", "phone"},
       "3",
       R"({"id":"100APPLE/IMG_E0001.HEIC","name":"IMG_E0001.HEIC","directory":"100APPLE",
           "kind":"photo","sizeBytes":10,"captureDate":"2026-05-20T12:00:00Z","dateSource":"metadata",
           "isOptimized":false,"isEditedVariant":true})"},
      {{"catalog", "phone"}, "4/captureDate", R"("2026-05-21T12:00:00.500Z")"},
      {{"catalog", "phone"}, "4/isOptimized", "true"},
      {{"catalog", "phone"},
       "6",
       R"({"id":"IMG_0004.PNG","name":"IMG_0004.PNG","kind":"photo","sizeBytes":10,
           "isOptimized":false,"isEditedVariant":false})"},
      {{"bundles", "phone"},
       "0",
       R"({"id":"100APPLE/IMG_0001","original":"100APPLE/IMG_0001.HEIC",
           "assets":["100APPLE/IMG_0001.HEIC","100APPLE/IMG_0001.MOV","100APPLE/IMG_0001.AAE",
                     "100APPLE/IMG_E0001.HEIC"],
           "hasEditedVersion":true,"isLivePhoto":true,"pictures":2})"},
      {{"groups", "phone"},
       "groups/1",
       R"({"id":"event-2026-05-21","folderName":"2026-05-21","dateStart":"2026-05-21T12:00:00.500Z",
           "dateEnd":"2026-05-21T13:00:00Z","place":{"latitude":41.9,"longitude":12.501},
           "counts":{"photos":1,"videos":1,"sidecars":0,"others":0,"totalBytes":20},
           "bundles":["100APPLE/IMG_0002","100APPLE/IMG_0003"],
           "assets":["100APPLE/IMG_0002.JPG","100APPLE/IMG_0003.MOV"],"children":[]})"},
      {{"groups", "phone"},
       "groups/2",
       R"({"id":"no-date","folderName":"No date",
           "counts":{"photos":1,"videos":0,"sidecars":0,"others":0,"totalBytes":10},
           "bundles":["/IMG_0004"],"assets":["IMG_0004.PNG"],"children":[]})"},
      {{"groups", "phone"}, "homeCandidates", "[]"},
      {{"groups", "phone"}, "homeIsAmbiguous", "false"},
      {{"groups", "phone"}, "filteredBundles", "4"},
      {{"groups", "phone"}, "optimizedCount", "1"},
      {{"groups", "phone", "--set", "skipOptimized=true"}, "filteredBundles", "3"},
      {{"groups", "phone", "--set", "skipOptimized=true"}, "optimizedCount", "1"},
      {{"groups", "phone", "--set", "liveOnlyPhoto=true"},
       "groups/0/assets",
       R"(["100APPLE/IMG_0001.HEIC","100APPLE/IMG_0001.AAE","100APPLE/IMG_E0001.HEIC"])"},
      {{"groups", "phone", "--set", "uiMode=flat"}, "groups/0/id", R"("flat")"},
      {{"groups", "phone", "--set", "uiMode=byDate", "--set", "granularity=month"},
       "groups/0/id",
       R"("2026-05")"},
      {{"groups", "phone", "--set", R"(nameOverrides={"event-2026-05-20":"Дача"})"},
       "groups/0/folderName",
       R"("Дача")"},
      {{"places", "phone", "--set", "placeRadiusKm=0.01"}, "1/count", "1"},
      {{"places", "phone"}, "0/bundles", R"(["100APPLE/IMG_0001","100APPLE/IMG_0002"])"},
      {{"places", "phone", "--set", "includeLive=false"},
       "",
       R"([{"center":{"latitude":41.9,"longitude":12.501},"count":1,
            "bundles":["100APPLE/IMG_0002"]}])"},
      {{"template", "sanitize", " a/b. "}, "", R"({"name":"a-b"})"},
      {{"template", "presets"}, "4/english", R"("Period, country")"},
      {{"template", "presets"}, "1/template/tokens/2", R"({"month":{"_0":"pad2"}})"},
  };
  for (const Row& row : rows) expectJson(row.arguments, row.path, row.expected);
}

TEST_F(ListCommands, timeZone_movesDaysAndTheOptionBeatsTheVariable) {
  tester.environment = {{"DEMO_TIME_ZONE", "Pacific/Kiritimati"}};
  expectJson({"groups", "phone"}, "groups/0/id", R"("event-2026-05-21")");
  expectJson({"groups", "phone", "--set", "timeZoneID=UTC"}, "groups/0/id",
             R"("event-2026-05-20")");
  tester.environment = {{"DEMO_MODE", "flat"}};
  expectJson({"groups", "phone"}, "groups/0/id", R"("flat")");
}

TEST_F(ListCommands, machineLanguage_namesFoldersWhateverTheCallSpeaks) {
  tester.localeID = "ru_RU";
  expectJson({"groups", "phone"}, "groups/2/folderName", R"("Без даты")");
}

TEST_F(ListCommands, text_isATableWithATotal) {
  EXPECT_EQ(tester.run({"groups", "phone"}).out,
            "Папка       Снимков  Фото  Видео  Прочих  Размер  Даты\n"
            "2026-05-20        1     2      1       1    40\u00A0Б  2026-05-20\n"
            "2026-05-21        2     1      1       0    20\u00A0Б  2026-05-21\n"
            "No date           1     1      0       0    10\u00A0Б  —\n"
            "\n"
            "3 папки: 7 файлов, 70\u00A0Б\n"
            "Уменьшенные копии вместо оригиналов, которые лежат в облаке: 1.\n");
  EXPECT_THAT(tester.run({"catalog", "phone", "--lang", "en"}).out,
              AllOf(HasSubstr("100APPLE/IMG_E0001.HEIC  photo  10\u00A0B  2026-05-20 12:00:00  —"),
                    HasSubstr("edited version"), HasSubstr("reduced copy"),
                    HasSubstr("\n8 files, 80\u00A0B\n")));
  EXPECT_THAT(
      tester.run({"bundles", "phone"}).out,
      AllOf(HasSubstr("Live Photo"), HasSubstr("IMG_0001.MOV, IMG_0001.AAE, IMG_E0001.HEIC"),
            HasSubstr("\n5 снимков: 8 файлов\n")));
  EXPECT_THAT(tester.run({"places", "phone"}).out,
              AllOf(HasSubstr("41.90000, 12.50050        2"), HasSubstr("1 место: 2 снимка\n")));
  tester.outColumns = 60;
  EXPECT_THAT(tester.run({"catalog", "phone"}).out, Not(HasSubstr("IMG_E0001.HEIC")));
}

TEST_F(ListCommands, counts_takeTheRightForm) {
  struct Row {
    int files;
    std::string russian;
    std::string english;
  };
  const std::vector<Row> rows{{1, "1 файл,", "1 file,"},
                              {2, "2 файла,", "2 files,"},
                              {5, "5 файлов,", "5 files,"},
                              {11, "11 файлов,", "11 "},
                              {21, "21 файл,", "21 files,"},
                              {22, "22 файла,", "22 files,"},
                              {1000, "1\u00A0000 файлов,", "1,000 files,"}};
  for (const Row& row : rows) {
    std::string snapshot;
    for (int i = 0; i < row.files; ++i) {
      snapshot += snapshot.empty() ? "[" : ",";
      snapshot += R"({"name":"a.jpg","kind":"photo","size":1})";
    }
    tester.addPhone(snapshot + "]");
    EXPECT_THAT(tester.run({"catalog", "phone"}).out, HasSubstr("\n" + row.russian));
    EXPECT_THAT(tester.run({"catalog", "phone", "--lang", "en"}).out,
                HasSubstr("\n" + row.english));
  }
}

TEST_F(ListCommands, emptyCatalogue_isSaidInOneSentence) {
  tester.addPhone("[]");
  for (const std::string command : {"catalog", "bundles", "groups", "places"}) {
    const CommandResult result = tester.run({command, "phone"});
    EXPECT_EQ(result.status, ExitStatus::done);
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 1) << result.out;
  }
  EXPECT_THAT(tester.run({"groups", "phone"}).out, StartsWith("В каталоге телефона нет"));
  EXPECT_EQ(tester.run({"catalog", "phone", "--json"}).out, "[]\n");
}

TEST_F(ListCommands, badSnapshot_isNamedWithItsPlace) {
  struct Row {
    std::string snapshot;
    std::string russian;
    std::string english;
  };
  const std::vector<Row> rows{
      {"[\n  {\"name\" 5}\n]", "строка 2, столбец", "line 2, column"},
      {"", "не JSON", "not JSON"},
      {R"([{"name":"a","kind":"photo","size":1},{"name":"b","kind":"photo"}])",
       "в записи 2 нет поля «size»", "entry 2 lacks the field “size”"},
      {R"([{"name":5,"kind":"photo","size":1}])", "у поля «name»", "in the field “name”"},
      {R"([{"name":"a","kind":"photo","size":-1}])", "в поле «size»", "in the field “size”"},
      {"{}", "списком записей", "a list of entries"},
      {std::string(100000, '['), "списком записей", "a list of entries"},
  };
  for (const Row& row : rows) {
    tester.addPhone(row.snapshot);
    for (const bool isEnglish : {false, true}) {
      const CommandResult result =
          tester.run({"catalog", "phone", "--lang", isEnglish ? "en" : "ru"});
      EXPECT_EQ(result.status, ExitStatus::stopped);
      EXPECT_THAT(result.out, IsEmpty());
      EXPECT_THAT(result.err, AllOf(StartsWith("tavrix: "), HasSubstr("phone/snapshot.json"),
                                    HasSubstr(isEnglish ? row.english : row.russian)));
      EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
  }
  for (const std::string command : {"catalog", "bundles", "groups", "places"}) {
    const CommandResult result = tester.run({command, "other"});
    EXPECT_EQ(result.status, ExitStatus::stopped);
    EXPECT_THAT(result.err, HasSubstr("ничего нет"));
  }
}

TEST_F(ListCommands, snapshot_writesTheEntriesAsRead) {
  EXPECT_EQ(tester.run({"snapshot", "phone", "other"}).status, ExitStatus::done);
  const auto items = [&](const std::string& path) {
    return Snapshot::read(*openFileForReading(tester.folder / path));
  };
  EXPECT_EQ(items("other/snapshot.json"), items("phone/snapshot.json"));
  EXPECT_EQ(tester.run({"snapshot", "phone", "photos/x/y"}).status, ExitStatus::stopped);
}

TEST_F(ListCommands, snapshotOverItsOwnSource_leavesTheCatalogueAlone) {
  const std::string written =
      R"([{"name":"IMG_0001.JPG","kind":"photo","size":10,"ownField":"kept"}])";
  tester.folder.write("phone/snapshot.json", written);
  // A source whose catalogue is a link to that of another folder.
  std::filesystem::create_directories(tester.folder / "other");
  std::filesystem::create_symlink("../phone/snapshot.json", tester.folder / "other/snapshot.json");
  const std::vector<std::pair<std::string, std::string>> calls{
      {"phone", "phone"}, {"other", "other"}, {"other", tester.folder / "phone"}};
  for (const auto& [source, folder] : calls) {
    const CommandResult result = tester.run({"snapshot", source, folder, "--lang", "en"});
    EXPECT_EQ(result.status, ExitStatus::usage);
    EXPECT_THAT(result.err, HasSubstr("is inside the source; choose another one"));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
  }
  tester.environment = {{"SNAPSHOT_OUT", tester.folder / "phone"}};
  EXPECT_EQ(tester.run({"groups", "phone"}).status, ExitStatus::usage);
  EXPECT_EQ(tester.folder.read("phone/snapshot.json"), written);
}

TEST_F(ListCommands, snapshotOut_getsTheCatalogueOfEveryReading) {
  tester.environment = {{"SNAPSHOT_OUT", tester.folder / "other"}};
  EXPECT_EQ(tester.run({"places", "phone"}).status, ExitStatus::done);
  EXPECT_THAT(tester.folder.read("other/snapshot.json"), HasSubstr("IMG_E0001.HEIC"));
}

TEST_F(ListCommands, templateRender_readsTemplateAndContext) {
  const std::string nameTemplate =
      R"({"tokens":[{"day":{"_0":"pad2"}},{"literal":{"_0":" "}},{"month":{"_0":"nameLower"}},
          {"literal":{"_0":", "}},{"city":{"_0":"asIs"}}],"language":"russian"})";
  const auto render = [&](const std::string& context) {
    return tester.run({"template", "render", "--template", nameTemplate, "--context", context});
  };
  EXPECT_EQ(render(R"({"dateStart":"2026-05-20T22:00:00Z","timeZone":"Europe/Moscow",
                       "city":"Рим"})")
                .out,
            "21 май, Рим\n");
  EXPECT_EQ(render(R"({"dateStart":"2026-05-20T22:00:00Z","city":null})").out, "20 май\n");
  EXPECT_EQ(render("{}").out, "untitled\n");
  for (const std::string context :
       {"", "[]", "{", R"({"city":5})", R"({"dateStart":"May"})", R"({"timeZone":"Mars"})"}) {
    const CommandResult result = render(context);
    EXPECT_EQ(result.status, ExitStatus::usage) << context;
    EXPECT_THAT(result.out, IsEmpty());
  }
}

TEST_F(ListCommands, unreadOutput_endsInSilence) {
  struct ClosedSink : TextSink {
    void write(std::string_view) override { throw OutputClosed{}; }
  };
  struct FullSink : TextSink {
    void write(std::string_view) override { throw OutputError{ENOSPC}; }
  };
  ClosedSink closed;
  FullSink full;
  StringSink err;
  const std::vector<std::string> call{"catalog", tester.folder / "phone"};
  EXPECT_EQ(runCommandLine(call, {.out = closed, .err = err}), ExitStatus::done);
  EXPECT_EQ(err.text(), "");
  EXPECT_EQ(runCommandLine(call, {.out = full, .err = err}), ExitStatus::stopped);
  EXPECT_THAT(err.text(), HasSubstr("нет места на диске"));
}

}  // namespace
}  // namespace tavrix::cli
