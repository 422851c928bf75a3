#include "naming/NameTemplateCoding.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

namespace tavrix {
namespace {

using namespace name_token;
using Kind = NameTemplateError::Kind;

/// Returns the first JSON example of a page of the documentation.
std::string documentedExample(const std::string& fileName) {
  std::ifstream file{std::string{TAVRIX_DOCS} + "/" + fileName};
  const std::string page{std::istreambuf_iterator<char>{file}, {}};
  const std::string fence = "```json\n";
  const auto begin = page.find(fence);
  if (begin == std::string::npos) return {};
  return page.substr(begin + fence.size(), page.find("```", begin + 3) - begin - fence.size());
}

std::string withTokens(const std::string& tokens) {
  return R"({"language":"system","tokens":[)" + tokens + "]}";
}

std::string repeatedTokens(std::size_t count) {
  std::string tokens;
  for (std::size_t i = 0; i < count; ++i)
    tokens += i == 0 ? R"({"period":{}})" : R"(,{"period":{}})";
  return withTokens(tokens);
}

NameTemplateError errorOf(const std::string& text) {
  try {
    NameTemplateCoding::decodeText(text);
  } catch (const NameTemplateError& error) {
    return error;
  }
  ADD_FAILURE() << "was read: " << text.substr(0, 200);
  return {Kind::notJson, {}};
}

TEST(NameTemplateCoding, documentedExample_decodesAndComesBackAsWritten) {
  const std::string example = documentedExample("template.md");
  const NameTemplate expected{
      {Year{YearStyle::full}, Literal{"-"}, Month{MonthStyle::pad2}, Literal{" — "}, City{},
       Literal{", "}, Country{CountryStyle::name, TextCaseStyle::upper}},
      NameLanguage::russian};
  EXPECT_EQ(NameTemplateCoding::decodeText(example), expected);
  EXPECT_EQ(NameTemplateCoding::encodeText(expected), example);
}

TEST(NameTemplateCoding, everyTokenAndStyle_hasItsPersistedForm) {
  const std::pair<NameToken, const char*> rows[] = {
      {Year{YearStyle::full}, R"({"year":{"_0":"full"}})"},
      {Year{YearStyle::twoDigits}, R"({"year":{"_0":"short"}})"},
      {Month{MonthStyle::pad2}, R"({"month":{"_0":"pad2"}})"},
      {Month{MonthStyle::plain}, R"({"month":{"_0":"plain"}})"},
      {Month{MonthStyle::nameLower}, R"({"month":{"_0":"nameLower"}})"},
      {Month{MonthStyle::nameCap}, R"({"month":{"_0":"nameCap"}})"},
      {Month{MonthStyle::abbr}, R"({"month":{"_0":"abbr"}})"},
      {Month{MonthStyle::abbrUpper}, R"({"month":{"_0":"abbrUpper"}})"},
      {Day{DayStyle::pad2}, R"({"day":{"_0":"pad2"}})"},
      {Day{DayStyle::plain}, R"({"day":{"_0":"plain"}})"},
      {City{TextCaseStyle::asIs}, R"({"city":{"_0":"asIs"}})"},
      {City{TextCaseStyle::lower}, R"({"city":{"_0":"lower"}})"},
      {Country{CountryStyle::name, TextCaseStyle::upper},
       R"({"country":{"_0":"name","_1":"upper"}})"},
      {Country{CountryStyle::code, TextCaseStyle::asIs},
       R"({"country":{"_0":"code","_1":"asIs"}})"},
      {Event{TextCaseStyle::capital}, R"({"event":{"_0":"capital"}})"},
      {Literal{"\"/\\\n\u0001 — "}, R"({"literal":{"_0":"\"/\\\n\u0001 — "}})"},
      {Literal{std::string{"a\0b", 3}}, R"({"literal":{"_0":"a\u0000b"}})"},
      {Literal{}, R"({"literal":{"_0":""}})"},
      {Period{}, R"({"period":{}})"},
  };
  for (const auto& [token, json] : rows) {
    const NameTemplate value{{token}, NameLanguage::system};
    EXPECT_EQ(NameTemplateCoding::decodeText(withTokens(json)), value) << json;
    EXPECT_EQ(parseJson(NameTemplateCoding::encodeText(value)), parseJson(withTokens(json)))
        << json;
  }
}

TEST(NameTemplateCoding, unknownKeys_arePassedOverOutsideTokens) {
  EXPECT_EQ(NameTemplateCoding::decodeText(
                R"({"tokens":[{"day":{"_0":"plain","_1":3}}],"language":"english","title":null})"),
            (NameTemplate{{Day{DayStyle::plain}}, NameLanguage::english}));
}

TEST(NameTemplateCoding, faults_areNamedWithTheirPlace) {
  struct Row {
    std::string text;
    Kind kind;
    NameTemplateError::Details details;
  };
  const Row rows[] = {
      {"[]", Kind::wrongType, {}},
      {R"({"language":"system"})", Kind::missingKey, {.key = "tokens"}},
      {R"({"tokens":[]})", Kind::missingKey, {.key = "language"}},
      {R"({"tokens":{},"language":"system"})", Kind::wrongType, {.key = "tokens"}},
      {R"({"tokens":[],"language":1})", Kind::wrongType, {.key = "language"}},
      {R"({"tokens":[],"language":"System"})",
       Kind::unknownLanguage,
       {.key = "language", .value = "System"}},
      {withTokens(R"("year")"), Kind::wrongType, {.tokenIndex = 0, .key = "tokens"}},
      {withTokens(R"({"period":{}},{})"), Kind::keyCount, {.tokenIndex = 1}},
      {withTokens(R"({"period":{},"year":{"_0":"full"}})"), Kind::keyCount, {.tokenIndex = 0}},
      {withTokens(R"({"period":{},"hour":{}})"), Kind::keyCount, {.tokenIndex = 0}},
      {withTokens(R"({"hour":{"_0":"pad2"}})"),
       Kind::unknownToken,
       {.tokenIndex = 0, .key = "hour"}},
      {withTokens(R"({"period":null})"), Kind::wrongType, {.tokenIndex = 0, .key = "period"}},
      {withTokens(R"({"year":{}})"), Kind::missingKey, {.tokenIndex = 0, .key = "_0"}},
      {withTokens(R"({"year":{"_0":"pad2"}})"), Kind::unknownStyle, {0, "_0", "pad2", {}}},
      {withTokens(R"({"country":{"_0":"code"}})"),
       Kind::missingKey,
       {.tokenIndex = 0, .key = "_1"}},
      {withTokens(R"({"country":{"_0":"code","_1":""}})"), Kind::unknownStyle, {0, "_1", "", {}}},
      {withTokens(R"({"literal":{"_0":7}})"), Kind::wrongType, {.tokenIndex = 0, .key = "_0"}},
      {repeatedTokens(1001), Kind::tooManyTokens, {.key = "tokens"}},
  };
  for (const Row& row : rows) {
    const NameTemplateError error = errorOf(row.text);
    EXPECT_EQ(error.kind(), row.kind) << row.text.substr(0, 200);
    EXPECT_EQ(error.details(), row.details) << row.text.substr(0, 200);
  }
  EXPECT_STREQ(errorOf(withTokens("{}")).what(), "Invalid number of keys found, expected one.");
}

TEST(NameTemplateCoding, textThatIsNoJson_isNamedWithLineAndColumn) {
  const NameTemplateError broken = errorOf("{\n  \"tokens\": [}\n");
  EXPECT_EQ(broken.kind(), Kind::notJson);
  EXPECT_EQ(broken.details().position.value_or(JsonPosition{}).line, 2U);
  EXPECT_EQ(errorOf(withTokens("{\"literal\":{\"_0\":\"\xFF\"}}")).kind(), Kind::notJson);
  EXPECT_EQ(errorOf(std::string(100000, '[')).kind(), Kind::tooLarge);
}

TEST(NameTemplateCoding, largestTemplate_survivesWritingAndReading) {
  EXPECT_EQ(NameTemplateCoding::decodeText(repeatedTokens(1000)).tokens.size(), 1000U);
  const NameTemplate largest{{Literal{std::string(65536, '\b')}}, NameLanguage::system};
  EXPECT_EQ(NameTemplateCoding::decodeText(NameTemplateCoding::encodeText(largest)), largest);
  const NameTemplate larger{{Literal{std::string(65537, 'a')}}, NameLanguage::system};
  EXPECT_EQ(errorOf(NameTemplateCoding::encodeText(larger)).kind(), Kind::tooLarge);
}

}  // namespace
}  // namespace tavrix
