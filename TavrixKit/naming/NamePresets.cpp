#include "naming/NamePresets.h"

namespace tavrix::NamePresets {
namespace {

using namespace name_token;

Literal text(const char* literal) { return {literal}; }

/// Returns the tokens of a day such as "2026-05-16".
std::vector<NameToken> day() {
  return {Year{YearStyle::full}, text("-"), Month{MonthStyle::pad2}, text("-"),
          Day{DayStyle::pad2}};
}

std::vector<NameToken> joined(std::vector<NameToken> first, const std::vector<NameToken>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

NameTemplate ofSystemLanguage(std::vector<NameToken> tokens) {
  return {std::move(tokens), NameLanguage::system};
}

}  // namespace

const std::vector<Builtin>& builtins() {
  static const std::vector<Builtin> presets{
      {"Дата — Город", "Date — city", ofSystemLanguage(joined(day(), {text(" — "), City{}}))},
      {"Год-месяц Город", "Year-month city",
       ofSystemLanguage(
           {Year{YearStyle::full}, text("-"), Month{MonthStyle::pad2}, text(" "), City{}})},
      {"Месяц словом", "Month in words",
       ofSystemLanguage(
           {Month{MonthStyle::nameCap}, text(" "), Year{YearStyle::full}, text(", "), City{}})},
      {"Город — дата", "City — date", ofSystemLanguage(joined({City{}, text(" — ")}, day()))},
      {"Период, страна", "Period, country",
       ofSystemLanguage({Period{}, text(" — "), City{}, text(", "), Country{CountryStyle::code}})}};
  return presets;
}

const NameTemplate& defaultTemplate() { return builtins().front().nameTemplate; }

}  // namespace tavrix::NamePresets
