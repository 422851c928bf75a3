#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "foundation/Time.h"
#include "foundation/TimeZone.h"

namespace tavrix {

/// 2026: `full` "2026", `twoDigits` "26".
enum class YearStyle { full, twoDigits };
/// May: `pad2` "05", `plain` "5"; the others are its stand-alone (nominative) name: `nameLower`
/// "may", `nameCap` "May", `abbr` the short name as the locale spells it, `abbrUpper` the same in
/// capitals. No name keeps a full stop.
enum class MonthStyle { pad2, plain, nameLower, nameCap, abbr, abbrUpper };
/// The 5th: `pad2` "05", `plain` "5".
enum class DayStyle { pad2, plain };
enum class CountryStyle { name, code };
/// Letter case by the rules of the template's locale; `capital` begins every word with a capital
/// and puts the rest in lower case.
enum class TextCaseStyle { asIs, lower, upper, capital };

/// The building blocks of a name. All but Literal are data blocks: they take their text from a
/// NameContext and are empty when it lacks the datum.
namespace name_token {
/// The year of the first date.
struct Year {
  YearStyle style = YearStyle::full;
  friend bool operator==(const Year&, const Year&) = default;
};
/// The month of the first date.
struct Month {
  MonthStyle style = MonthStyle::pad2;
  friend bool operator==(const Month&, const Month&) = default;
};
/// The day of the month of the first date.
struct Day {
  DayStyle style = DayStyle::pad2;
  friend bool operator==(const Day&, const Day&) = default;
};
struct City {
  TextCaseStyle letterCase = TextCaseStyle::asIs;
  friend bool operator==(const City&, const City&) = default;
};
struct Country {
  CountryStyle style = CountryStyle::name;
  TextCaseStyle letterCase = TextCaseStyle::asIs;
  friend bool operator==(const Country&, const Country&) = default;
};
struct Event {
  TextCaseStyle letterCase = TextCaseStyle::asIs;
  friend bool operator==(const Event&, const Event&) = default;
};
/// Fixed text, put in as it stands.
struct Literal {
  std::string text;
  friend bool operator==(const Literal&, const Literal&) = default;
};
/// First and last day: "2026-08-01–2026-08-03", or the one day when both are the same.
struct Period {
  friend bool operator==(const Period&, const Period&) = default;
};
}  // namespace name_token

using NameToken =
    std::variant<name_token::Year, name_token::Month, name_token::Day, name_token::City,
                 name_token::Country, name_token::Event, name_token::Literal, name_token::Period>;

/// Picks the locale of month names, place names and letter case: that of the machine, "ru_RU" or
/// "en_US".
enum class NameLanguage { system, russian, english };

/// What a folder name is made of.
struct NameTemplate {
  std::vector<NameToken> tokens;
  NameLanguage language = NameLanguage::system;

  friend bool operator==(const NameTemplate&, const NameTemplate&) = default;
};

/// What is known of the group that gets a name. Absent and empty texts are the same.
struct NameContext {
  std::optional<Instant> dateStart;     ///< the first shot
  std::optional<Instant> dateEnd;       ///< the last shot
  TimeZone timeZone = TimeZone::utc();  ///< in which dates become days
  std::optional<std::string> city;
  std::optional<std::string> countryName;
  std::optional<std::string> countryCode;
  std::optional<std::string> eventName;

  friend bool operator==(const NameContext&, const NameContext&) = default;
};

}  // namespace tavrix
