#include "settings/GivenTemplate.h"

#include <gmock/gmock.h>

#include "naming/NamePresets.h"

namespace tavrix {
namespace {

using namespace name_token;
using testing::Contains;

const NameTemplate yearAlone{{Year{}}, NameLanguage::system};
const NameTemplate cityAlone{{City{}}, NameLanguage::english};

const std::vector<SavedPreset> saved{
    {"Год", yearAlone}, {"год", cityAlone}, {"{day}", yearAlone}, {"2026 {", cityAlone}};

TEST(GivenTemplate, jsonTypedAndTitles_areAllRead) {
  const NameTemplate& monthInWords = NamePresets::builtins()[2].nameTemplate;
  const std::pair<std::string, NameTemplate> rows[] = {
      {R"({"language":"english","tokens":[{"city":{"_0":"asIs"}}]})", cityAlone},
      {"\xEF\xBB\xBF { \"language\":\"english\",\"tokens\":[{\"city\":{\"_0\":\"asIs\"}}]}",
       cityAlone},
      {"{year}", yearAlone},
      {"{language:english}{city}", cityAlone},
      {"Месяц словом", monthInWords},
      {" месяц СЛОВОМ ", monthInWords},
      {"month in words", monthInWords},
      {"Год", yearAlone},
      {"год", cityAlone},
      {"ГОД", yearAlone},
      {"2026 {", cityAlone},
      {"{day}", {{Day{}}, NameLanguage::system}},
  };
  for (const auto& [text, expected] : rows) {
    const auto given = givenTemplate(text, saved);
    ASSERT_TRUE(std::holds_alternative<NameTemplate>(given)) << text;
    EXPECT_EQ(std::get<NameTemplate>(given), expected) << text;
  }
}

TEST(GivenTemplate, faults_areThoseOfTheFormThatWasMeant) {
  const auto faultOf = [](const std::string& text) {
    return std::get<TemplateFault>(givenTemplate(text, saved));
  };
  for (const std::string json : {"{}", "{\"tokens\":5}", " { \"", "{ }"}) {
    EXPECT_TRUE(std::holds_alternative<NameTemplateError>(faultOf(json))) << json;
  }
  using Kind = TypedTemplateError::Kind;
  EXPECT_EQ(std::get<TypedTemplateError>(faultOf("{year")).kind, Kind::unclosedBrace);
  const auto noTitle = std::get<TypedTemplateError>(faultOf(" Годы "));
  EXPECT_EQ(noTitle.kind, Kind::noBlock);
  EXPECT_EQ(noTitle.word, "Годы");
  EXPECT_THAT(noTitle.allowed, Contains("Год"));
  EXPECT_THAT(noTitle.allowed, Contains("Month in words"));
}

}  // namespace
}  // namespace tavrix
