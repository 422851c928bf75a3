#include <absl/time/time.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

#include "foundation/TimeZone.h"

namespace tavrix {
namespace {

using namespace std::chrono;

Instant at(const char* text) { return parseIso8601(text).value(); }

LocalTime clock(const char* text) { return LocalTime{at(text).time_since_epoch()}; }

TEST(Instant, unixSeconds_roundToMillisecondsAndRejectOtherAges) {
  struct Row {
    double seconds;
    std::optional<std::int64_t> milliseconds;
  };
  const double none = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  const Row rows[] = {{0, 0},
                      {1.0004, 1000},
                      {1.0006, 1001},
                      {-0.25, -250},
                      {-1.9996, -2000},
                      {1779278400.123, 1779278400123},
                      {253402300799, 253402300799000},
                      {253402300800, std::nullopt},
                      {-62135596800, -62135596800000},
                      {-62135596801, std::nullopt},
                      {none, std::nullopt},
                      {infinite, std::nullopt},
                      {-1e300, std::nullopt}};
  for (const Row& row : rows) {
    const auto instant = instantFromUnixSeconds(row.seconds);
    const auto count = instant ? std::optional{instant->time_since_epoch().count()} : std::nullopt;
    EXPECT_EQ(count, row.milliseconds) << row.seconds;
  }
}

TEST(Iso8601, wellFormedText_isReadToTheMillisecond) {
  EXPECT_EQ(iso8601(at("2026-05-20T12:00:00Z")), "2026-05-20T12:00:00Z");
  EXPECT_EQ(iso8601(at("2026-05-20T12:00:00.5Z")), "2026-05-20T12:00:00.500Z");
  EXPECT_EQ(iso8601(at("2026-05-20T12:00:00.123999999Z")), "2026-05-20T12:00:00.123Z");
  EXPECT_EQ(iso8601(at("1969-12-31T23:59:59.001Z")), "1969-12-31T23:59:59.001Z");
  EXPECT_EQ(iso8601(earliestInstant), "0001-01-01T00:00:00Z");
  EXPECT_EQ(iso8601(latestInstant), "9999-12-31T23:59:59.999Z");
}

TEST(Iso8601, otherText_isNothing) {
  for (const char* text :
       {"", "2026-05-20", "2026-05-20T12:00:00", "2026-05-20 12:00:00Z", "2026-05-20T24:00:00Z",
        "2026-05-20T12:60:00Z", "2026-05-20T12:00:60Z", "2026-02-29T12:00:00Z",
        "0000-01-01T00:00:00Z", "2026-05-20T12:00:00+00:00", "2026-05-20T12:00:00.Z",
        "2026-05-20T12:00:00.1234567890Z", "2026-05-20T12:00:00ZZ", "2026-05-20T12:00:00.-1Z",
        "+026-05-20T12:00:00Z"}) {
    EXPECT_FALSE(parseIso8601(text)) << text;
  }
}

RC_GTEST_PROP(Iso8601, anyInstant_comesBack, ()) {
  const auto count = *rc::gen::inRange(earliestInstant.time_since_epoch().count(),
                                       latestInstant.time_since_epoch().count());
  RC_ASSERT(parseIso8601(iso8601(Instant{milliseconds{count}})) == Instant{milliseconds{count}});
}

TEST(Day, text_isReadOnlyWhenTheDayExists) {
  EXPECT_EQ(parseDay("2024-02-29"), CivilDate(year{2024} / 2 / 29));
  for (const char* text : {"2026-02-29", "2026-13-01", "2026-00-10", "2026-04-31", "0000-01-01",
                           "2026-4-1", "2026/04/01", "2026-04-01 ", ""}) {
    EXPECT_FALSE(parseDay(text)) << text;
  }
  EXPECT_EQ(dayText(year{7} / 1 / 2), "0007-01-02");
}

TEST(TimeZone, name_isLoadedOnlyFromTheDatabase) {
  for (const char* id : {"UTC", "Europe/Berlin", "America/Argentina/Buenos_Aires", "Etc/GMT+5"}) {
    EXPECT_TRUE(TimeZone::load(id)) << id;
  }
  for (const char* id :
       {"", "Europe/Atlantis", "Europe", "localtime", "/etc/localtime", "../zoneinfo/UTC",
        "Europe/../UTC", "file:UTC", "UTC ", "Fixed/UTC+05:00:00"}) {
    EXPECT_FALSE(TimeZone::load(id)) << id;
  }
  EXPECT_FALSE(TimeZone::load(std::string_view{"UTC\0", 4}));
}

TEST(TimeZone, variable_namesAZoneByItsNameOrItsFile) {
  EXPECT_EQ(timeZoneOfVariable("Europe/Rome"), "Europe/Rome");
  EXPECT_EQ(timeZoneOfVariable(":Europe/Rome"), "Europe/Rome");
  EXPECT_EQ(timeZoneOfVariable(":/usr/share/zoneinfo/Asia/Tokyo"), "Asia/Tokyo");
  for (const char* value : {"", ":", "MSK-3", "Mars/Olympus", "/etc/passwd", "/nowhere"}) {
    EXPECT_EQ(timeZoneOfVariable(value), std::nullopt) << value;
  }
}

struct ClockRow {
  const char* zone;
  const char* local;
  const char* utc;
};

TEST(TimeZone, wallClock_isTheMomentThatTheZoneMeans) {
  const ClockRow rows[] = {
      // A spring change skips an hour: the time moves forward by the gap.
      {"America/New_York", "2026-03-08T01:59:59Z", "2026-03-08T06:59:59Z"},
      {"America/New_York", "2026-03-08T02:30:00Z", "2026-03-08T07:30:00Z"},
      {"America/New_York", "2026-03-08T03:00:00Z", "2026-03-08T07:00:00Z"},
      {"Europe/Berlin", "2026-03-29T02:00:00Z", "2026-03-29T01:00:00Z"},
      {"Europe/Berlin", "2026-03-29T02:59:59.999Z", "2026-03-29T01:59:59.999Z"},
      // An autumn change repeats an hour: the first occurrence is used.
      {"America/New_York", "2026-11-01T01:30:00Z", "2026-11-01T05:30:00Z"},
      {"Europe/Berlin", "2026-10-25T02:30:00Z", "2026-10-25T00:30:00Z"},
      {"Europe/Berlin", "2026-10-25T03:00:00Z", "2026-10-25T02:00:00Z"},
      // Samoa skipped a whole day.
      {"Pacific/Apia", "2011-12-30T12:00:00Z", "2011-12-30T22:00:00Z"},
      // Local mean time, inside and before the table; and rules after 2037, inside and after it.
      {"Europe/Berlin", "1890-01-01T00:53:28Z", "1890-01-01T00:00:00Z"},
      {"Europe/Berlin", "1700-01-01T00:53:28Z", "1700-01-01T00:00:00Z"},
      {"America/New_York", "2050-07-01T12:00:00Z", "2050-07-01T16:00:00Z"},
      {"America/New_York", "2050-01-01T12:00:00Z", "2050-01-01T17:00:00Z"},
      {"America/New_York", "2300-07-01T12:00:00Z", "2300-07-01T16:00:00Z"},
  };
  for (const ClockRow& row : rows) {
    const TimeZone zone = TimeZone::load(row.zone).value();
    EXPECT_EQ(iso8601(zone.toInstant(clock(row.local))), row.utc) << row.zone << " " << row.local;
  }
}

TEST(TimeZone, dayBorder_fallsWhereTheZoneHasMidnight) {
  const TimeZone tokyo = TimeZone::load("Asia/Tokyo").value();
  EXPECT_EQ(dayText(tokyo.dateAt(at("2026-05-10T14:59:59.999Z"))), "2026-05-10");
  EXPECT_EQ(dayText(tokyo.dateAt(at("2026-05-10T15:00:00Z"))), "2026-05-11");
  EXPECT_EQ(dayText(tokyo.dateAt(at("1960-05-10T15:00:00Z"))), "1960-05-11");
  EXPECT_EQ(dayText(TimeZone::utc().dateAt(at("1969-12-31T23:59:59.999Z"))), "1969-12-31");
}

RC_GTEST_PROP(TimeZone, offsetTable_agreesWithTheDatabase, ()) {
  const std::string id = *rc::gen::element<std::string>(
      "America/New_York", "Europe/Berlin", "Europe/Dublin", "Asia/Kathmandu", "Africa/Casablanca",
      "Australia/Lord_Howe", "America/Sao_Paulo");
  const auto second = *rc::gen::inRange<std::int64_t>(-6'000'000'000, 8'000'000'000);
  absl::TimeZone reference;
  RC_ASSERT(absl::LoadTimeZone(id, &reference));
  const Instant instant{seconds{second}};
  const LocalTime local = TimeZone::load(id)->toLocal(instant);
  RC_ASSERT((local.time_since_epoch() - instant.time_since_epoch()) ==
            seconds{reference.At(absl::FromUnixSeconds(second)).offset});
}

}  // namespace
}  // namespace tavrix
