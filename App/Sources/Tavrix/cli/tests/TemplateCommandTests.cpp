#include "cli/tests/CommandTester.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class TemplateCommandTest : public testing::Test {
 protected:
  CommandResult render(const std::string& nameTemplate,
                       const std::string& context = R"({"dateStart":"2026-05-20T12:00:00Z",
                                                        "city":"Rome"})") const {
    return tester.run(
        {"template", "render", "--template", nameTemplate, "--context", context, "--lang", "en"});
  }

  CommandTester tester;
};

TEST_F(TemplateCommandTest, typedTemplatesAndTitles_workWhereverATemplateIsGiven) {
  tester.addPhone(smallSnapshot, smallMedia);
  EXPECT_EQ(render("{year}-{month:nameCap} {city:upper}").out, "2026-May ROME\n");
  EXPECT_EQ(render("месяц словом").out, "May 2026, Rome\n");
  EXPECT_EQ(tester.run({"presets", "save", "Мой", "{{{day}}} Month in words"}).status,
            ExitStatus::done);
  EXPECT_EQ(render("МОЙ").out, "{20} Month in words\n");
  const auto groups = [&](std::vector<std::string> more) {
    more.insert(more.begin(), {"groups", "phone"});
    return tester.run(more).out;
  };
  EXPECT_THAT(groups({"--set", "nameTemplate={day} {month:abbr}"}), HasSubstr("20 May"));
  EXPECT_THAT(groups({"--set", "nameTemplate=мой"}), HasSubstr("{20} Month in words"));
  EXPECT_THAT(tester.run({"settings", "set", "nameTemplate", "мой"}).out,
              HasSubstr("{{{day}}} Month in words\n"));
  EXPECT_THAT(groups({}), HasSubstr("{20} Month in words"));
}

TEST_F(TemplateCommandTest, faultsInATypedTemplate_nameColumnAndWhatWasMeant) {
  const std::pair<std::string, std::string> rows[] = {
      {"{yaer}", "in column 2 there is no block “yaer” (did you mean year?), allowed: year, month"},
      {"{month:namecap}", "month has no style “namecap” (did you mean nameCap?), allowed: pad2"},
      {"{city:upper:x}", "in column 13 there is an extra word “x” in city"},
      {"{language:rusian}", "no language “rusian” (did you mean russian?), allowed: system"},
      {"{day}{language:english}{language:english}", "in column 25 the language is given a second"},
      {"{day", "the brace “{” is not closed; a brace in the name itself is written “{{”"},
      {"day}", "in column 4 there is an unmatched “}”"},
      {"{day}\n", "in column 6 there is a character that cannot be printed"},
      {"Месяц слвом", "no template has this title (did you mean “Месяц словом”?)"},
      {"[]", "no template has this title;"},
  };
  for (const auto& [nameTemplate, fault] : rows) {
    const CommandResult result = render(nameTemplate);
    EXPECT_EQ(result.status, ExitStatus::usage) << nameTemplate;
    EXPECT_THAT(result.err, HasSubstr(fault));
  }
  const CommandResult set = tester.run({"groups", "phone", "--set", "nameTemplate={yaer}"});
  EXPECT_EQ(set.status, ExitStatus::usage);
  EXPECT_THAT(set.err, HasSubstr("значение «{yaer}»: в столбце 2 неизвестный блок «yaer»"));
}

TEST_F(TemplateCommandTest, unknownFieldsOfTheContext_areNamed) {
  const CommandResult near = render("{city}", R"({"citty":"Rome"})");
  EXPECT_EQ(near.status, ExitStatus::usage);
  EXPECT_THAT(near.err, HasSubstr("there is no field “citty” (did you mean city?), allowed: "
                                  "dateStart, dateEnd, timeZone, city, countryName,"));
  EXPECT_THAT(render("{city}", R"({"weather":"Rain"})").err, Not(HasSubstr("did you mean")));
  EXPECT_EQ(render("{city}", "\xEF\xBB\xBF{\"city\":\"Rome\"}").out, "Rome\n");
}

TEST_F(TemplateCommandTest, presets_showWhatTheyGiveInTheLanguageOfTheNames) {
  const auto presets = [&](const std::string& locale) {
    tester.localeID = locale;
    return tester.run({"template", "presets", "--lang", "en"}).out;
  };
  EXPECT_THAT(presets("en_US"),
              AllOf(HasSubstr("Date — city\n  {year}-{month}-{day} — {city}\n"
                              "  for example: 2026-05-20 — Rome\n"),
                    HasSubstr("  for example: May 2026, Rome\n"),
                    HasSubstr("  for example: 2026-05-20–2026-05-22 — Rome, IT\n")));
  EXPECT_THAT(presets("ru_RU"), HasSubstr("  for example: Май 2026, Рим\n"));
  tester.run({"presets", "save", "a", "{language:english}{month:nameLower} {country}"});
  tester.run(
      {"presets", "save", "b", R"({"language":"system","tokens":[{"literal":{"_0":"x"}}]})"});
  EXPECT_THAT(
      tester.run({"presets", "--lang", "en"}).out,
      AllOf(HasSubstr("a (saved)\n  {language:english}{month:nameLower} {country}\n"
                      "  for example: may Italy\n"),
            HasSubstr("b (saved)\n"
                      "  {\"language\":\"system\",\"tokens\":[{\"literal\":{\"_0\":\"x\"}}]}\n"
                      "  for example: 2026-05-20\n")));
}

}  // namespace
}  // namespace tavrix::cli
