#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "foundation/Time.h"
#include "foundation/TimeZone.h"

namespace tavrix {

/// For 2026: `full` is "2026", `twoDigits` is "26".
enum class YearStyle { full, twoDigits };
/// For May: `pad2` is "05", `plain` is "5". The other styles are the stand-alone (nominative) name:
/// `nameLower` is "may", `nameCap` is "May", `abbr` is the short name as the locale spells it,
/// `abbrUpper` is the short name in capitals. Full stops are removed from names.
enum class MonthStyle { pad2, plain, nameLower, nameCap, abbr, abbrUpper };
/// For the 5th: `pad2` is "05", `plain` is "5".
enum class DayStyle { pad2, plain };
enum class CountryStyle { name, code };
/// Letter case by the rules of the template's locale. `capital` writes the first letter of every
/// word in upper case and the rest in lower case.
enum class TextCaseStyle { asIs, lower, upper, capital };

/// The building blocks of a name. All except Literal are data blocks: they take their text from a
/// NameContext and are empty if it lacks the value.
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
/// Fixed text, inserted unchanged.
struct Literal {
  std::string text;
  friend bool operator==(const Literal&, const Literal&) = default;
};
/// The first and last day: "2026-08-01–2026-08-03", or one day if both are the same.
struct Period {
  friend bool operator==(const Period&, const Period&) = default;
};
}  // namespace name_token

using NameToken =
    std::variant<name_token::Year, name_token::Month, name_token::Day, name_token::City,
                 name_token::Country, name_token::Event, name_token::Literal, name_token::Period>;

/// The language of month names, place names and letter case: the locale of the machine, "ru_RU" or
/// "en_US".
enum class NameLanguage { system, russian, english };

/// The building blocks of a folder name, in order, and its language.
struct NameTemplate {
  std::vector<NameToken> tokens;
  NameLanguage language = NameLanguage::system;

  friend bool operator==(const NameTemplate&, const NameTemplate&) = default;
};

/// The known values of the group to be named. Absent and empty texts are equivalent.
struct NameContext {
  std::optional<Instant> dateStart;     ///< date of the first shot
  std::optional<Instant> dateEnd;       ///< date of the last shot
  TimeZone timeZone = TimeZone::utc();  ///< the zone of the days in the name
  std::optional<std::string> city;
  std::optional<std::string> countryName;
  std::optional<std::string> countryCode;
  std::optional<std::string> eventName;

  friend bool operator==(const NameContext&, const NameContext&) = default;
};

}  // namespace tavrix
