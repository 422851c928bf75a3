#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "naming/NameTemplate.h"

namespace tavrix {

/// The texts of a style or language in templates, in the order of its cases.
template <typename Style>
constexpr std::array<std::string_view, 0> styleTexts{};
template <>
inline constexpr std::array<std::string_view, 2> styleTexts<YearStyle>{"full", "short"};
template <>
inline constexpr std::array<std::string_view, 6> styleTexts<MonthStyle>{
    "pad2", "plain", "nameLower", "nameCap", "abbr", "abbrUpper"};
template <>
inline constexpr std::array<std::string_view, 2> styleTexts<DayStyle>{"pad2", "plain"};
template <>
inline constexpr std::array<std::string_view, 2> styleTexts<CountryStyle>{"name", "code"};
template <>
inline constexpr std::array<std::string_view, 4> styleTexts<TextCaseStyle>{"asIs", "lower", "upper",
                                                                           "capital"};
template <>
inline constexpr std::array<std::string_view, 3> styleTexts<NameLanguage>{"system", "russian",
                                                                          "english"};

template <typename Style>
std::string_view styleText(Style style) {
  return styleTexts<Style>.at(static_cast<std::size_t>(style));
}

/// Returns the style that has this text, or nullopt if there is none.
template <typename Style>
std::optional<Style> styleOf(std::string_view text) {
  const auto& texts = styleTexts<Style>;
  const auto found = std::find(texts.begin(), texts.end(), text);
  if (found == texts.end()) return std::nullopt;
  return static_cast<Style>(found - texts.begin());
}

}  // namespace tavrix
