#include "naming/NameRendering.h"

#include <gmock/gmock.h>

#include "naming/NamePresets.h"

namespace tavrix {
namespace {

using namespace name_token;

NameContext contextOf(const char* start, const char* end) {
  NameContext context;
  if (start != nullptr) context.dateStart = parseIso8601(start);
  if (end != nullptr) context.dateEnd = parseIso8601(end);
  return context;
}

NameContext romanWeekend() {
  NameContext context = contextOf("2026-05-06T10:00:00Z", "2026-05-08T10:00:00Z");
  context.city = "Рим";
  context.countryName = "Италия";
  context.countryCode = "IT";
  return context;
}

TEST(NameRendering, token_rendersByStyleAndLocale) {
  NameContext context = contextOf("1905-01-09T10:00:00Z", nullptr);
  context.city = "нижний НОВГОРОД";
  context.countryName = "côte d'ivoire";
  context.countryCode = "ci";
  context.eventName = "istanbul trip";
  const std::tuple<NameToken, const char*, const char*> rows[] = {
      {Year{YearStyle::full}, "ru_RU", "1905"},
      {Year{YearStyle::twoDigits}, "ru_RU", "05"},
      {Month{MonthStyle::pad2}, "ru_RU", "01"},
      {Month{MonthStyle::plain}, "ru_RU", "1"},
      {Month{MonthStyle::nameLower}, "ru_RU", "январь"},
      {Month{MonthStyle::nameCap}, "ru_RU", "Январь"},
      {Month{MonthStyle::abbr}, "ru_RU", "янв"},
      {Month{MonthStyle::abbrUpper}, "ru_RU", "ЯНВ"},
      {Month{MonthStyle::nameLower}, "en_US", "january"},
      {Month{MonthStyle::nameCap}, "en_US", "January"},
      {Month{MonthStyle::abbr}, "en_US", "Jan"},
      {Day{DayStyle::pad2}, "ar_EG", "09"},
      {Day{DayStyle::plain}, "ar_EG", "9"},
      {City{TextCaseStyle::asIs}, "ru_RU", "нижний НОВГОРОД"},
      {City{TextCaseStyle::lower}, "ru_RU", "нижний новгород"},
      {City{TextCaseStyle::upper}, "ru_RU", "НИЖНИЙ НОВГОРОД"},
      {City{TextCaseStyle::capital}, "ru_RU", "Нижний Новгород"},
      {Country{CountryStyle::name, TextCaseStyle::upper}, "en_US", "CÔTE D'IVOIRE"},
      {Country{CountryStyle::code, TextCaseStyle::asIs}, "en_US", "ci"},
      {Country{CountryStyle::code, TextCaseStyle::upper}, "tr_TR", "Cİ"},
      {Event{TextCaseStyle::upper}, "en_US", "ISTANBUL TRIP"},
      {Event{TextCaseStyle::capital}, "tr_TR", "İstanbul Trip"},
      {Literal{"a/b."}, "en_US", "a/b."},
      {Literal{"a\xFF"}, "en_US", "a\uFFFD"},
      {Period{}, "ar_EG", "1905-01-09"},
  };
  for (const auto& [token, locale, expected] : rows) {
    EXPECT_EQ(NameRendering::renderToken(token, context, locale), expected) << locale;
  }
}

TEST(NameRendering, monthNames_keepNoFullStopInAnyLocale) {
  for (const char* const locale : {"ru_RU", "en_US", "fr_FR", "de_DE", "es_ES", "pt_BR", "uk_UA"}) {
    for (int month = 1; month <= 12; ++month) {
      NameContext context;
      context.dateStart = std::chrono::sys_days{std::chrono::year{2026} / month / 15};
      for (const auto style : {MonthStyle::nameLower, MonthStyle::abbr, MonthStyle::abbrUpper}) {
        EXPECT_THAT(
            NameRendering::renderToken(Month{style}, context, locale),
            testing::AllOf(testing::Not(testing::IsEmpty()), testing::Not(testing::HasSubstr("."))))
            << locale << month;
      }
    }
  }
}

TEST(NameRendering, dates_areCutInTheZoneOfTheContext) {
  NameContext context = contextOf("2025-12-31T23:30:00Z", "2026-01-01T22:30:00Z");
  EXPECT_EQ(NameRendering::renderToken(Period{}, context, "en_US"), "2025-12-31–2026-01-01");
  context.timeZone = TimeZone::load("Europe/Rome").value();
  EXPECT_EQ(NameRendering::renderToken(Period{}, context, "en_US"), "2026-01-01");
  EXPECT_EQ(NameRendering::renderToken(Year{}, context, "en_US"), "2026");
}

TEST(NameRendering, absentDatum_rendersEmpty) {
  NameContext context = contextOf(nullptr, "2026-08-03T10:00:00Z");
  context.city = "";
  const NameToken tokens[] = {Year{}, Month{}, Day{}, City{}, Country{}, Event{}};
  for (const NameToken& token : tokens) {
    EXPECT_EQ(NameRendering::renderToken(token, context, "ru_RU"), "") << token.index();
  }
  EXPECT_EQ(NameRendering::renderToken(Period{}, context, "ru_RU"), "2026-08-03");
  EXPECT_EQ(NameRendering::renderToken(Period{}, NameContext{}, "ru_RU"), "");
}

TEST(NameRendering, literals_goWithTheValueTheyLeadTo) {
  // Only the date and the city have a value.
  NameContext context = contextOf("2026-05-06T10:00:00Z", nullptr);
  context.city = "Рим";
  const Literal a{"a"};
  const Literal b{"b"};
  const std::pair<std::vector<NameToken>, const char*> rows[] = {
      {{}, "untitled"},
      {{a, b}, "untitled"},
      {{a, Event{}, b}, "untitled"},
      {{a, City{}}, "aРим"},
      {{a, b, City{}, a}, "abРимa"},
      {{a, Event{}, b, City{}}, "aРим"},
      {{City{}, a, b, Year{}}, "Римab2026"},
      {{City{}, a, Event{}}, "Рим"},
      {{City{}, a, Event{}, b, Year{}}, "Римb2026"},
      {{City{}, a, Event{}, b}, "Римb"},
      {{City{}, a, Event{}, Year{}}, "Рим2026"},
      {{City{}, Year{}}, "Рим2026"},
      {{Literal{"../"}, City{}, Literal{": "}}, "-Рим-"},
      {{Literal{"\xD0"}, City{}, Literal{"\xA0"}}, "\uFFFDРим\uFFFD"},
  };
  for (const auto& [tokens, expected] : rows) {
    EXPECT_EQ(NameRendering::render({tokens, NameLanguage::system}, context, "ru_RU"), expected);
  }
}

TEST(NameRendering, language_picksTheLocale) {
  const auto month = [](NameLanguage language, const char* system) {
    return NameRendering::render({{Month{MonthStyle::nameCap}}, language}, romanWeekend(), system);
  };
  EXPECT_EQ(month(NameLanguage::system, "de_DE"), "Mai");
  EXPECT_EQ(month(NameLanguage::system, "en_US_POSIX"), "May");
  EXPECT_EQ(month(NameLanguage::russian, "de_DE"), "Май");
  EXPECT_EQ(month(NameLanguage::english, "de_DE"), "May");
}

TEST(NamePresets, builtins_renderInTheirOrder) {
  NameContext unplaced = romanWeekend();
  unplaced.city = unplaced.countryName = unplaced.countryCode = std::nullopt;
  struct Row {
    const char* russian;
    const char* english;
    const char* placed;
    const char* unplaced;
  };
  const std::vector<Row> rows{
      {"Дата — Город", "Date — city", "2026-05-06 — Рим", "2026-05-06"},
      {"Год-месяц Город", "Year-month city", "2026-05 Рим", "2026-05"},
      {"Месяц словом", "Month in words", "Май 2026, Рим", "Май 2026"},
      {"Город — дата", "City — date", "Рим — 2026-05-06", "2026-05-06"},
      {"Период, страна", "Period, country", "2026-05-06–2026-05-08 — Рим, IT",
       "2026-05-06–2026-05-08"},
  };
  ASSERT_EQ(NamePresets::builtins().size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto& [russian, english, nameTemplate] = NamePresets::builtins()[i];
    EXPECT_EQ(russian, rows[i].russian);
    EXPECT_EQ(english, rows[i].english);
    EXPECT_EQ(nameTemplate.language, NameLanguage::system);
    EXPECT_EQ(NameRendering::render(nameTemplate, romanWeekend(), "ru_RU"), rows[i].placed);
    EXPECT_EQ(NameRendering::render(nameTemplate, unplaced, "ru_RU"), rows[i].unplaced);
  }
  EXPECT_EQ(NamePresets::defaultTemplate(), NamePresets::builtins().front().nameTemplate);
}

}  // namespace
}  // namespace tavrix
