#include "cli/CommandLine.h"

#include "cli/help/Help.h"
#include "cli/tests/CommandTester.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

Invocation parsed(const std::vector<std::string>& arguments, const Environment& environment = {}) {
  StringSink sink;
  const Surroundings surroundings{.out = sink, .err = sink, .environment = environment};
  return std::get<CommandRequest>(parseArguments(arguments, surroundings)).call;
}

TEST(CommandLine, optionsAnywhere_areRead) {
  const Invocation call =
      parsed({"--json", "plan", "A", "--set", "x=[1,2]", "B", "--set=y=z", "--lang", "en",
              "--state", "S", "--device-name", "Анна", "--verbose"});

  EXPECT_THAT(call.operands, ElementsAre("A", "B"));
  EXPECT_THAT(call.settings, ElementsAre("x=[1,2]", "y=z"));
  EXPECT_EQ(call.language, Language::english);
  EXPECT_EQ(call.deviceName, "Анна");
  EXPECT_EQ(call.stateFolder, "S");
  EXPECT_TRUE(call.json && call.verbose);
}

TEST(CommandLine, operandsThatLookLikeSomethingElse_areTakenAsTheyAre) {
  EXPECT_THAT(parsed({"template", "sanitize", "[a,b]"}).operands, ElementsAre("[a,b]"));
  EXPECT_THAT(parsed({"template", "sanitize", "plan"}).operands, ElementsAre("plan"));
  EXPECT_THAT(parsed({"catalog", "plan"}).operands, ElementsAre("plan"));
  EXPECT_THAT(parsed({"catalog", "--", "-x"}).operands, ElementsAre("-x"));
  EXPECT_THAT(parsed({"template", "sanitize", ""}).operands, ElementsAre(""));
  EXPECT_THAT(parsed({"template", "sanitize", "++"}).operands, ElementsAre("++"));
  EXPECT_THAT(parsed({"plan", "++", "--device-name", "++", "B", "--json"}).operands,
              ElementsAre("++", "B"));
  EXPECT_THAT(parsed({"plan", "A", "--", "++"}).operands, ElementsAre("A", "++"));
}

TEST(CommandLine, emptyValue_isAValueAndTakesNoOtherArgument) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"plan", "A", "B", "--device-name=", "--json"},
        {"plan", "A", "--device-name", "", "B", "--json"}}) {
    const Invocation call = parsed(arguments);
    EXPECT_THAT(call.operands, ElementsAre("A", "B"));
    EXPECT_EQ(call.deviceName, "");
    EXPECT_TRUE(call.json);
  }
  EXPECT_EQ(parsed({"plan", "A", "B"}).deviceName, std::nullopt);
  EXPECT_THAT(parsed({"catalog", "--set=", "A"}).settings, ElementsAre(""));
  EXPECT_THAT(parsed({"catalog", "--set", "--lang=", "A"}).settings, ElementsAre("--lang="));
  EXPECT_THAT(parsed({"catalog", "--", "--set="}).operands, ElementsAre("--set="));
}

TEST(CommandLine, optionGivenTwice_isRejected) {
  for (const std::vector<std::string>& twice :
       {std::vector<std::string>{"--device-name=X", "--device-name", "Y"},
        {"--state=S", "--state", "S"},
        {"--last", "7d", "--last", "3w"},
        {"--progress=none", "--progress=bar"}}) {
    std::vector<std::string> arguments{"plan", "A", "B"};
    arguments.insert(arguments.end(), twice.begin(), twice.end());
    EXPECT_THROW(parsed(arguments), CommandFailure) << twice.front();
  }
}

TEST(CommandLine, optionInPlaceOfAValue_isNoValue) {
  EXPECT_THROW(parsed({"groups", "A", "--only", "--quiet"}), CommandFailure);
  EXPECT_THROW(parsed({"plan", "A", "B", "--device-name", "--json"}), CommandFailure);
  EXPECT_THROW(parsed({"groups", "A", "--only", "-h"}), CommandFailure);
  EXPECT_THROW(parsed({"groups", "A", "--only", "--", "B"}), CommandFailure);
  EXPECT_EQ(parsed({"plan", "A", "B", "--device-name=--json"}).deviceName, "--json");
  EXPECT_THAT(parsed({"groups", "--", "--quiet"}).operands, ElementsAre("--quiet"));
}

TEST(CommandLine, demoFolder_standsInForAMissingSource) {
  const Environment demo{{"DEBUG_SNAPSHOT", "1"}, {"DEMO_DIR", "D"}};
  EXPECT_THAT(parsed({"catalog"}, demo).operands, ElementsAre("D"));
  EXPECT_THAT(parsed({"plan", "OUT"}, demo).operands, ElementsAre("D", "OUT"));
  EXPECT_THAT(parsed({"plan", "S", "OUT"}, demo).operands, ElementsAre("S", "OUT"));
  EXPECT_THROW(parsed({"catalog"}, {{"DEMO_DIR", "D"}}), CommandFailure);
  EXPECT_THROW(parsed({"template", "sanitize"}, demo), CommandFailure);
}

TEST(CommandLine, wrongCall_isOneSentenceInTheLanguageOfTheCall) {
  struct Row {
    std::vector<std::string> arguments;
    std::string russian;
    std::string english;
  };
  const std::vector<Row> rows{
      {{}, "Не указана команда", "No command is given"},
      {{"copy"}, "Команды «copy» нет", "There is no command “copy”"},
      {{"template"}, "Не указана команда", "No command is given"},
      {{"template", "bake"}, "«bake»", "“bake”"},
      {{"catalog"}, "Не хватает SOURCE", "SOURCE is missing"},
      {{"transfer", "phone"}, "Не хватает DEST", "DEST is missing"},
      {{"snapshot", "phone"}, "Не хватает OUT-DIR", "OUT-DIR is missing"},
      {{"catalog", "phone", "x\ny"},
       "Лишний параметр «x\uFFFDy»",
       "Unexpected argument “x\uFFFDy”"},
      {{"catalog", "phone", "--fast"}, "«--fast»", "“--fast”"},
      {{"catalog", "phone", "--device-name", "A"}, "«--device-name»", "“--device-name”"},
      {{"catalog", "phone", "--set"},
       "Не указано значение параметра «--set»",
       "option “--set” needs a value"},
      {{"template", "render", "--context", "{}"}, "--template", "--template is missing"},
      {{"groups", "phone", "--set", "x=1"},
       "«x» (значение «1») нет; есть такие: includePhotos",
       "no setting “x” (value “1”); the settings are: includePhotos"},
      {{"groups", "phone", "--set", "onlyNew=no"},
       "«onlyNew» не принимает значение «no»; можно: true",
       "“onlyNew” does not accept the value “no”; allowed: true or false"},
      {{"groups", "phone", "--set", "editedPolicy=x"},
       "both, editedOnly, originalsOnly",
       "both, editedOnly, originalsOnly"},
      {{"groups", "phone", "--set", "uiMode=tirps"},
       "значение «tirps». Может быть, trips? Можно: byDate, events",
       "value “tirps”. Did you mean trips? Allowed: byDate, events"},
      {{"groups", "phone", "--set", "onlyNew=ture"}, "Может быть, true?", "Did you mean true?"},
      {{"groups", "phone", "--set", "onlyNew"}, "КЛЮЧ=ЗНАЧЕНИЕ", "KEY=VALUE"},
      {{"groups", "phone", "--set", R"(nameTemplate={"tokens":[{"no":{}}],"language":"english"})"},
       "в элементе 1 поля «no» нет, можно: year, month",
       "in token 1 there is no field “no”, allowed: year, month"},
      {{"groups", "phone", "--set", R"(nameTemplate={"tokens":[{}],"language":"english"})"},
       ": в элементе 1 должно быть ровно одно поле;",
       ": in token 1 there must be exactly one field;"},
      {{"groups", "phone", "--set", R"(nameTemplate={"tokens":["year"],"language":"english"})"},
       ": элемент 1 — не объект JSON;",
       ": token 1 is not a JSON object;"},
      {{"groups", "phone", "--set", R"(nameTemplate={"tokens":[],"language":"fr"})"},
       "языка «fr» нет, можно: system, russian, english",
       "no language “fr”, allowed: system, russian, english"},
      {{"catalog", ""}, "SOURCE — пустая строка", "SOURCE is empty"},
      {{"catalog", "phone:"}, "нужен серийный номер", "needs a serial number"},
      {{"plan", "phone", ""}, "DEST — пустая строка", "DEST is empty"},
      {{"transfer", "", "photos"}, "SOURCE — пустая строка", "SOURCE is empty"},
      {{"snapshot", "phone", ""}, "OUT-DIR — пустая строка", "OUT-DIR is empty"},
      {{"catalog", "phone", "--state="}, "--state — пустая строка", "--state is empty"},
      {{"catalog", "phone", "++"}, "Лишний параметр «++»", "Unexpected argument “++”"},
      {{"plan", "phone", "photos", "--explain"}, "Параметра «--explain» нет", "option “--explain”"},
      {{"transfer", "phone", "phone"}, "содержит сам источник", "contains the source itself"},
  };
  CommandTester tester;
  tester.addPhone(smallSnapshot, smallMedia);
  for (Row row : rows) {
    for (const bool isEnglish : {false, true}) {
      if (isEnglish) row.arguments.insert(row.arguments.begin(), {"--lang", "en"});
      const CommandResult result = tester.run(row.arguments);
      EXPECT_EQ(result.status, ExitStatus::usage) << row.russian;
      EXPECT_THAT(result.out, IsEmpty());
      EXPECT_THAT(result.err, AllOf(StartsWith("tavrix: "), EndsWith(".\n"),
                                    HasSubstr(isEnglish ? row.english : row.russian)));
      EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
  }
  EXPECT_FALSE(tester.folder.has("photos"));
}

TEST(CommandLine, language_isThatOfTheSystemUnlessAskedOtherwise) {
  CommandTester tester;
  tester.messagesLocaleID = "en_GB";
  EXPECT_THAT(tester.run({"x"}).err, HasSubstr("There is no command “x”"));
  EXPECT_THAT(tester.run({"x", "--lang", "system"}).err, HasSubstr("There is no command “x”"));
  EXPECT_THAT(tester.run({"x", "--lang", "ru"}).err, HasSubstr("Команды «x» нет"));
  EXPECT_THAT(tester.run({"--help"}).out, HasSubstr("По-русски: tavrix --help --lang ru"));
  tester.messagesLocaleID = "de_DE";
  EXPECT_THAT(tester.run({"x"}).err, HasSubstr("Команды «x» нет"));
  EXPECT_THAT(tester.run({"catalog", "x", "--lang", "en", "--lang", "ru"}).err,
              HasSubstr("указан дважды"));
  EXPECT_THAT(tester.run({"catalog", "x", "--lang", "fr"}).err, HasSubstr("«fr»"));
  EXPECT_THAT(tester.run({"--lang=", "catalog", "x"}).err, HasSubstr("Язык «» неизвестен"));
}

TEST(CommandLine, typo_isMetWithWhatWasProbablyMeant) {
  const CommandTester tester;
  struct Row {
    std::vector<std::string> arguments;
    std::string meant;
  };
  for (const Row& row :
       {Row{{"transfr", "phone", "photos"}, "Did you mean tavrix transfer?"},
        Row{{"hlep"}, "Did you mean tavrix help?"},
        Row{{"groups", "phone", "--jsno"}, "Did you mean --json?"},
        Row{{"verify", "photos", "--write-checksum"}, "Did you mean --write-checksums?"},
        Row{{"groups", "phone", "--set", "uimode=trips"}, "Did you mean uiMode?"},
        Row{{"frobnicate"}, "There is no command “frobnicate”; for the list"}}) {
    auto arguments = row.arguments;
    arguments.insert(arguments.end(), {"--lang", "en"});
    const CommandResult result = tester.run(arguments);
    EXPECT_EQ(result.status, ExitStatus::usage);
    EXPECT_THAT(result.err, HasSubstr(row.meant));
  }
}

TEST(CommandLine, wrongVariable_isNamed) {
  CommandTester tester;
  tester.addPhone(smallSnapshot);
  tester.environment = {{"DEMO_MODE", "weekly"}};
  EXPECT_THAT(tester.run({"groups", "phone"}).err,
              AllOf(HasSubstr("DEMO_MODE"), HasSubstr("«weekly»")));
  tester.environment = {{"DEMO_TIME_ZONE", "Mars"}};
  EXPECT_EQ(tester.run({"groups", "phone"}).status, ExitStatus::usage);
  EXPECT_EQ(tester.run({"groups", "phone", "--set", "uiMode=flat"}).status, ExitStatus::usage);
}

TEST(CommandLine, wrongVariable_isPassedOverWhereAnOptionStandsForIt) {
  CommandTester tester;
  tester.addPhone(smallSnapshot);
  tester.environment = {{"DEMO_MODE", "weekly"}, {"DEMO_TIME_ZONE", "Mars"}};
  const CommandResult result =
      tester.run({"groups", "phone", "--set", "timeZoneID=UTC", "--set", "uiMode=byDate"});
  EXPECT_EQ(result.status, ExitStatus::done) << result.err;
}

TEST(CommandLine, unknownStyle_isToldWithThoseThatTheTemplateTakes) {
  struct Row {
    std::string token;
    std::string field;
    std::string allowed;
  };
  const std::string cases = "asIs, lower, upper, capital";
  const std::vector<Row> rows{
      {R"({"year":{"_0":"?"}})", "_0", "full, short"},
      {R"({"month":{"_0":"?"}})", "_0", "pad2, plain, nameLower, nameCap, abbr, abbrUpper"},
      {R"({"day":{"_0":"?"}})", "_0", "pad2, plain"},
      {R"({"city":{"_0":"?"}})", "_0", cases},
      {R"({"country":{"_0":"?","_1":"asIs"}})", "_0", "name, code"},
      {R"({"country":{"_0":"name","_1":"?"}})", "_1", cases},
      {R"({"event":{"_0":"?"}})", "_0", cases},
  };
  const CommandTester tester;
  for (const Row& row : rows) {
    const auto render = [&](const std::string& style) {
      std::string token = row.token;
      token.replace(token.find('?'), 1, style);
      return tester.run({"template", "render", "--lang", "en", "--context", "{}", "--template",
                         R"({"language":"english","tokens":[{"period":{}},)" + token + "]}"});
    };
    EXPECT_THAT(render("no").err, HasSubstr("in token 2 “" + row.field +
                                            "” has no value “no”, allowed: " + row.allowed + ";"));
    std::istringstream styles{row.allowed};
    for (std::string style; std::getline(styles >> std::ws, style, ',');) {
      EXPECT_EQ(render(style).status, ExitStatus::done) << row.token << style;
    }
  }
}

TEST(Help, everyCommand_hasExamplesInBothLanguages) {
  const CommandTester tester;
  const std::vector<std::vector<std::string>> calls{
      {},         {"catalog"},  {"bundles"},           {"groups"},   {"places"},
      {"plan"},   {"transfer"}, {"snapshot"},          {"template"}, {"template", "render"},
      {"verify"}, {"marker"},   {"marker", "rebuild"}, {"settings"}, {"presets"}};
  for (std::vector<std::string> call : calls) {
    call.emplace_back("--help");
    for (const std::string language : {"ru", "en"}) {
      std::vector<std::string> arguments = call;
      arguments.insert(arguments.end(), {"--lang", language});
      const CommandResult result = tester.run(arguments);
      EXPECT_EQ(result.status, ExitStatus::done);
      EXPECT_THAT(result.out, AllOf(HasSubstr(language == "ru" ? "Пример" : "Example"),
                                    HasSubstr("tavrix " + (call.size() > 1 ? call.front() : "")),
                                    HasSubstr("mergesByMode")));
    }
  }
  EXPECT_THAT(tester.run({"--version"}).out, StartsWith("Tavrix "));
}

}  // namespace
}  // namespace tavrix::cli
