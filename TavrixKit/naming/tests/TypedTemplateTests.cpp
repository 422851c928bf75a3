#include "naming/TypedTemplate.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include "naming/NamePresets.h"
#include "naming/NameTemplateCoding.h"

namespace tavrix {
namespace {

using namespace name_token;
using Kind = TypedTemplateError::Kind;
using testing::ElementsAre;

NameTemplate parsed(const std::string& text) {
  auto result = TypedTemplate::parse(text);
  if (const auto* const error = std::get_if<TypedTemplateError>(&result)) {
    ADD_FAILURE() << text << ": fault in column " << error->column;
    return {};
  }
  return std::get<NameTemplate>(result);
}

TypedTemplateError errorOf(const std::string& text) {
  auto result = TypedTemplate::parse(text);
  if (const auto* const error = std::get_if<TypedTemplateError>(&result)) return *error;
  ADD_FAILURE() << "was read: " << text.substr(0, 200);
  return {};
}

TEST(TypedTemplate, blocksStylesAndText_areTokens) {
  struct Row {
    std::string text;
    std::vector<NameToken> tokens;
    NameLanguage language = NameLanguage::system;
  };
  const std::vector<Row> rows{
      {"{year}-{month:nameCap} {city}",
       {Year{}, Literal{"-"}, Month{MonthStyle::nameCap}, Literal{" "}, City{}}},
      {"{year:short}{month:abbrUpper}{day:plain}",
       {Year{YearStyle::twoDigits}, Month{MonthStyle::abbrUpper}, Day{DayStyle::plain}}},
      {"{country}{country:code}{country:upper}{country:code:lower}{country:name:capital}",
       {Country{}, Country{CountryStyle::code}, Country{CountryStyle::name, TextCaseStyle::upper},
        Country{CountryStyle::code, TextCaseStyle::lower},
        Country{CountryStyle::name, TextCaseStyle::capital}}},
      {" {event:capital} — {period} ",
       {Literal{" "}, Event{TextCaseStyle::capital}, Literal{" — "}, Period{}, Literal{" "}}},
      {"{{{year}}}{{a}}", {Literal{"{"}, Year{}, Literal{"}{a}"}}},
      {"{ month : nameLower }", {Month{MonthStyle::nameLower}}},
      {"a{language:english}b{day}", {Literal{"ab"}, Day{}}, NameLanguage::english},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(parsed(row.text), (NameTemplate{row.tokens, row.language})) << row.text;
  }
}

TEST(TypedTemplate, faults_areNamedWithColumnWordAndWhatIsAllowed) {
  struct Row {
    std::string text;
    TypedTemplateError error;
  };
  const std::vector<std::string> cases{"asIs", "lower", "upper", "capital"};
  const std::vector<std::string> languages{"system", "russian", "english"};
  const std::vector<Row> rows{
      {"Год {year", {.kind = Kind::unclosedBrace, .column = 5}},
      {"{year{month}", {.kind = Kind::unclosedBrace, .column = 1}},
      {"{year}}", {.kind = Kind::strayBrace, .column = 7}},
      {"{year} {month:namecap}",
       {Kind::unknownStyle,
        15,
        "month",
        "namecap",
        {"pad2", "plain", "nameLower", "nameCap", "abbr", "abbrUpper"}}},
      {"{city:}", {Kind::unknownStyle, 7, "city", "", cases}},
      {"{country:kod}",
       {Kind::unknownStyle,
        10,
        "country",
        "kod",
        {"name", "code", "asIs", "lower", "upper", "capital"}}},
      {"{country:code: big}", {Kind::unknownStyle, 16, "country", "big", cases}},
      {"{country:upper:code}", {Kind::extraWord, 16, "country", "code", {}}},
      {"{period:upper}", {Kind::extraWord, 9, "period", "upper", {}}},
      {"{day}{language}", {Kind::unknownLanguage, 15, "language", "", languages}},
      {"{day}{language:fr}", {Kind::unknownLanguage, 16, "language", "fr", languages}},
      {"{language:english:x}", {Kind::extraWord, 19, "language", "x", {}}},
      {"{language:english}{language:russian}", {Kind::secondLanguage, 20, "language", "language"}},
      {"{day}\n", {.kind = Kind::notPrintable, .column = 6}},
      {"я\xFF{day}", {.kind = Kind::notPrintable, .column = 2}},
      {"{{year}}", {.kind = Kind::noBlock}},
      {"", {.kind = Kind::noBlock}},
      {std::string(65537, 'a'), {.kind = Kind::tooLong}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(errorOf(row.text), row.error) << row.text.substr(0, 200);
  }
  const TypedTemplateError unknown = errorOf("я{yaer}");
  EXPECT_EQ(unknown.kind, Kind::unknownToken);
  EXPECT_EQ(unknown.column, 3U);
  EXPECT_EQ(unknown.word, "yaer");
  EXPECT_THAT(unknown.allowed, ElementsAre("year", "month", "day", "period", "city", "country",
                                           "event", "language"));
}

TEST(TypedTemplate, limits_areThoseOfTheJson) {
  std::string blocks;
  for (std::size_t i = 0; i < NameTemplateCoding::maxTokens; ++i) blocks += "{day}";
  EXPECT_EQ(parsed(blocks).tokens.size(), NameTemplateCoding::maxTokens);
  EXPECT_EQ(errorOf(blocks + "{day}").kind, Kind::tooLong);
  EXPECT_EQ(TypedTemplate::print({{Day{}, Literal{std::string(40000, '{')}}, {}}), std::nullopt);
}

TEST(TypedTemplate, builtinPresets_areShownAsOneWouldTypeThem) {
  std::vector<std::string> texts;
  for (const auto& preset : NamePresets::builtins()) {
    texts.push_back(TypedTemplate::print(preset.nameTemplate).value_or("cannot be typed"));
  }
  EXPECT_THAT(texts, ElementsAre("{year}-{month}-{day} — {city}", "{year}-{month} {city}",
                                 "{month:nameCap} {year}, {city}", "{city} — {year}-{month}-{day}",
                                 "{period} — {city}, {country:code}"));
}

template <typename Style>
Style anyOf(int count) {
  return static_cast<Style>(*rc::gen::inRange(0, count));
}

NameToken anyToken() {
  switch (*rc::gen::inRange(0, 8)) {
    case 0:
      return Year{anyOf<YearStyle>(2)};
    case 1:
      return Month{anyOf<MonthStyle>(6)};
    case 2:
      return Day{anyOf<DayStyle>(2)};
    case 3:
      return City{anyOf<TextCaseStyle>(4)};
    case 4:
      return Country{anyOf<CountryStyle>(2), anyOf<TextCaseStyle>(4)};
    case 5:
      return Event{anyOf<TextCaseStyle>(4)};
    case 6:
      return Period{};
    default:
      return Literal{*rc::gen::element<std::string>("", " ", "{", "}}", "{year}", ":", "— я", "\t",
                                                    "\xEF\xBB\xBF", "\xE2\x80\xAE")};
  }
}

RC_GTEST_PROP(TypedTemplate, templateThatIsPrinted_isReadBackAsItIs, ()) {
  NameTemplate nameTemplate;
  for (int count = *rc::gen::inRange(0, 6); count > 0; --count) {
    nameTemplate.tokens.push_back(anyToken());
  }
  nameTemplate.language = anyOf<NameLanguage>(3);
  const auto text = TypedTemplate::print(nameTemplate);
  RC_PRE(text.has_value());
  RC_ASSERT(std::get<NameTemplate>(TypedTemplate::parse(*text)) == nameTemplate);
}

RC_GTEST_PROP(TypedTemplate, textThatIsRead_isPrintedInAFormThatMeansTheSame, ()) {
  std::string text;
  for (int count = *rc::gen::inRange(0, 12); count > 0; --count) {
    text += *rc::gen::element<std::string>("{", "}", "{{", "}}", "{year}", "{ city : upper}",
                                           "{country:code:lower}", "{language:russian}", "day", ":",
                                           " ", "я", "\n");
  }
  const auto read = TypedTemplate::parse(text);
  RC_PRE(std::holds_alternative<NameTemplate>(read));
  const auto& nameTemplate = std::get<NameTemplate>(read);
  const auto printed = TypedTemplate::print(nameTemplate);
  RC_ASSERT(printed.has_value());
  RC_ASSERT(std::get<NameTemplate>(TypedTemplate::parse(*printed)) == nameTemplate);
}

}  // namespace
}  // namespace tavrix
