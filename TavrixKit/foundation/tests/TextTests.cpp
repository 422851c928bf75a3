#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "foundation/DateFormatterCache.h"
#include "foundation/Text.h"

namespace tavrix {
namespace {

using namespace std::string_literals;

TEST(Utf8, illFormedSequences_becomeReplacementCharacters) {
  EXPECT_EQ(replacingInvalidUtf8("Ялта 🏖 file"), "Ялта 🏖 file");
  EXPECT_EQ(replacingInvalidUtf8("a\xFFz"), "a\uFFFDz");
  EXPECT_EQ(replacingInvalidUtf8("\xC0\xAF"), "\uFFFD\uFFFD");                      // overlong "/"
  EXPECT_EQ(replacingInvalidUtf8("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");            // a surrogate
  EXPECT_EQ(replacingInvalidUtf8("\xF4\x90\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD");  // past U+10FFFF
  EXPECT_EQ(replacingInvalidUtf8("Я\xD0"), "Я\uFFFD");                              // cut short
  EXPECT_EQ(replacingInvalidUtf8("a\0я"s), "a\0я"s);
}

RC_GTEST_PROP(Utf8, repairedText_isLeftAloneTheSecondTime, (const std::string& text)) {
  const std::string repaired = replacingInvalidUtf8(text);
  RC_ASSERT(replacingInvalidUtf8(repaired) == repaired);
}

TEST(LetterCase, textAndLocale_followTheLanguage) {
  EXPECT_EQ(upperCased("img"), "IMG");
  EXPECT_EQ(upperCased("straße"), "STRASSE");
  EXPECT_EQ(lowerCased("HEIC.ЁЛКА", "ru_RU"), "heic.ёлка");
  EXPECT_EQ(upperCased("istanbul", "tr"), "İSTANBUL");
  EXPECT_EQ(lowerCased("ISPARTA", "tr"), "ısparta");
  EXPECT_EQ(lowerCased("ISPARTA", "ru_RU"), "isparta");
  EXPECT_EQ(capitalised("санкт-петербург, россия", "ru_RU"), "Санкт-Петербург, Россия");
  EXPECT_EQ(capitalised("NEW YORK", "en_US"), "New York");
  EXPECT_EQ(caseFolded("ПЛЯЖ"), caseFolded("пляж"));
  EXPECT_EQ(caseFolded("STRASSE"), caseFolded("straße"));
  EXPECT_NE(caseFolded("IMG_1"), caseFolded("IMG_2"));
}

TEST(Graphemes, prefix_neverCutsACharacter) {
  const std::string accent = "e\u0301";             // 3 bytes
  const std::string family = "👨\u200D👩\u200D👧";  // 18 bytes
  const std::string flag = "🇷🇺";                    // 8 bytes
  EXPECT_EQ(graphemeClusters(accent + family + flag),
            (std::vector<std::string_view>{accent, family, flag}));
  EXPECT_EQ(graphemePrefix("abc" + accent, 5), "abc");
  EXPECT_EQ(graphemePrefix("abc" + accent, 6), "abc" + accent);
  EXPECT_EQ(graphemePrefix(family + "x", 17), "");
  EXPECT_EQ(graphemePrefix(flag + flag, 15), flag);
  EXPECT_EQ(graphemePrefix("да", 3), "д");
  EXPECT_EQ(graphemePrefix("", 0), "");
}

RC_GTEST_PROP(Graphemes, clusters_joinToTheText, (const std::string& text)) {
  std::string joined;
  for (const std::string_view cluster : graphemeClusters(text)) joined += cluster;
  RC_ASSERT(joined == text);
}

TEST(WhiteSpace, bothEnds_areTrimmedByUnicode) {
  EXPECT_EQ(trimmedWhiteSpace(" \t\u00A0\u3000Море у дома\u2028\n"), "Море у дома");
  EXPECT_EQ(trimmedWhiteSpace("\u200Bx"), "\u200Bx");  // zero width, but not white space
  EXPECT_EQ(trimmedWhiteSpace(" \u2003 "), "");
  EXPECT_EQ(trimmedWhiteSpace(""), "");
}

TEST(Terminal, columns_countWhatIsShown) {
  EXPECT_EQ(displayWidth("Ялта"), 4);
  EXPECT_EQ(displayWidth("東京"), 4);
  EXPECT_EQ(displayWidth("е\u0308лка"), 4);
  EXPECT_EQ(displayWidth("ＡＢ"), 4);
  EXPECT_EQ(displayWidth("a\u200Db"), 2);
}

TEST(Terminal, line_cannotBeBrokenOrTurned) {
  EXPECT_EQ(printable("a\nb\x1B[2J\u0085\u2028"), "a\uFFFDb\uFFFD[2J\uFFFD\uFFFD");
  EXPECT_EQ(printable("x\u202Egpj.exe\xFF"), "x\uFFFDgpj.exe\uFFFD");
  EXPECT_EQ(printable("Мы 👨\u200D👩\u200D👧"), "Мы 👨\u200D👩\u200D👧");
}

TEST(MonthName, locale_givesTheStandAloneForm) {
  EXPECT_EQ(monthName(5, "ru_RU", MonthNameStyle::full), "май");
  EXPECT_EQ(monthName(3, "ru_RU", MonthNameStyle::full), "март");
  EXPECT_EQ(monthName(12, "en_US", MonthNameStyle::full), "December");
  EXPECT_EQ(monthName(9, "en_US", MonthNameStyle::abbreviated), "Sep");
}

TEST(DateFormatterCache, key_givesTheSameFormatterAndTheDayOfItsZone) {
  DateFormatterCache cache;
  const TimeZone rome = TimeZone::load("Europe/Rome").value();
  const auto formatter = cache.formatter(isoDayKey(rome));
  EXPECT_EQ(cache.formatter(isoDayKey(rome)), formatter);
  EXPECT_NE(cache.formatter(isoDayKey(TimeZone::utc())), formatter);
  for (const char* moment :
       {"2026-05-20T22:30:00Z", "1582-10-10T12:00:00Z", "0004-02-29T12:00:00Z"}) {
    const Instant instant = parseIso8601(moment).value();
    EXPECT_EQ(formatter->text(instant), dayText(rome.dateAt(instant))) << moment;
  }
  EXPECT_EQ(formatter->text(parseIso8601("2026-05-20T22:30:00Z").value()), "2026-05-21");
}

}  // namespace
}  // namespace tavrix
