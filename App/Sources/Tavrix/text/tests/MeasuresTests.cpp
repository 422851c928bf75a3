#include <gtest/gtest.h>

#include "text/Measures.h"

namespace tavrix {
namespace {

TEST(Measures, duration_hasHoursOnlyWhenThereAreSome) {
  using namespace std::chrono_literals;
  EXPECT_EQ(durationText(35s), "0:35");
  EXPECT_EQ(durationText(725s), "12:05");
  EXPECT_EQ(durationText(3723s), "1:02:03");
  EXPECT_EQ(durationText(100h), "100:00:00");
  EXPECT_EQ(durationInUnits(Language::english, 35s), "35\u00A0s");
  EXPECT_EQ(durationInUnits(Language::russian, 3603s), "1\u00A0ч 3\u00A0с");
}

TEST(Measures, pauses_readAsTheyCompare) {
  using namespace std::chrono_literals;
  struct Row {
    Instant::duration gap;
    double limitHours;
    std::string expected;
  };
  const std::vector<Row> rows{
      {5h + 12min + 40s, 4, "5 ч 12 мин > 4 ч"},
      {4h + 20s, 4, "4 ч 20 с > 4 ч"},
      {4h + 1ms, 4, "4 ч 1 мс > 4 ч"},
      {90s, 0.01, "1 мин > 36 с"},
      {10s, 0, "10 с > 0 мин"},
      {99h + 59min, 48, "99 ч 59 мин > 48 ч"},
      {100h, 48, "4 дн. 4 ч > 48 ч"},
      {24000h + 5min, 2.5, "1 000 дн. > 2 ч 30 мин"},
      {24000h + 5min, 24000, "1 000 дн. 5 мин > 24 000 ч"},
      {1h, 1.0 / 3e6, "1 ч > 3.3333333333333335e-07 ч"},
  };
  for (const Row& row : rows) {
    const auto [value, limit] = comparedPauses(Language::russian, row.gap, row.limitHours);
    std::string text = value + " > " + limit;
    for (std::size_t at = 0; (at = text.find("\u00A0", at)) != std::string::npos;) {
      text.replace(at, 2, " ");
    }
    EXPECT_EQ(text, row.expected);
  }
}

TEST(Measures, distances_readAsTheyCompare) {
  struct Row {
    double km;
    double limitKm;
    std::string expected;
  };
  const std::vector<Row> rows{
      {61.4, 30, "61\u00A0km : 30\u00A0km"},       {30.04, 30, "30.04\u00A0km : 30\u00A0km"},
      {99.6, 100, "99.6\u00A0km : 100\u00A0km"},   {100, 100, "100\u00A0km : 100\u00A0km"},
      {30.6, 30.7, "30.6\u00A0km : 30.7\u00A0km"}, {12669, 1500, "12,669\u00A0km : 1,500\u00A0km"},
      {3, 1e300, "3\u00A0km : 1e+300\u00A0km"},
  };
  for (const Row& row : rows) {
    const auto [value, limit] = comparedDistances(Language::english, row.km, row.limitKm);
    EXPECT_EQ(value + " : " + limit, row.expected);
  }
}

}  // namespace
}  // namespace tavrix
