#include "model/Narrowing.h"

#include <algorithm>

#include "foundation/Text.h"

namespace tavrix {
namespace {

constexpr std::size_t suggestionsPerKind = 4;

std::vector<std::string> wordsOf(std::string_view text) {
  const std::string folded = caseFolded(replacingInvalidUtf8(text));
  std::vector<std::string> words;
  std::string_view rest = trimmedWhiteSpace(folded);
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of(" \t"), rest.size());
    words.emplace_back(rest.substr(0, end));
    rest = trimmedWhiteSpace(rest.substr(end));
  }
  return words;
}

bool holdsAll(std::string_view text, const std::vector<std::string>& words) {
  return std::all_of(words.begin(), words.end(), [&](const std::string& word) {
    return text.find(word) != std::string_view::npos;
  });
}

template <typename Items, typename TitleOf>
void suggest(std::vector<SearchSuggestion>& suggestions, SearchSuggestion::Kind kind,
             const std::vector<std::string>& words, const Items& items, const TitleOf& titleOf) {
  std::vector<SearchSuggestion> found;
  for (const auto& item : items) {
    std::string title = titleOf(item);
    if (holdsAll(caseFolded(title), words)) found.push_back({kind, std::move(title), item.count});
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const auto& a, const auto& b) { return a.count > b.count; });
  found.resize(std::min(found.size(), suggestionsPerKind));
  suggestions.insert(suggestions.end(), found.begin(), found.end());
}

struct Selected {
  const GroupFacts& facts;

  bool operator()(const nav_selection::All&) const { return true; }
  bool operator()(const nav_selection::Year& chosen) const {
    return std::any_of(facts.months.begin(), facts.months.end(),
                       [&](const auto& month) { return month.year == chosen.year; });
  }
  bool operator()(const nav_selection::Month& chosen) const {
    return std::any_of(facts.months.begin(), facts.months.end(), [&](const auto& month) {
      return month.year == chosen.year && month.month == chosen.month;
    });
  }
  bool operator()(const nav_selection::Place& chosen) const {
    return std::any_of(facts.places.begin(), facts.places.end(),
                       [&](const auto& place) { return place.name == chosen.name; });
  }
  bool operator()(const nav_selection::NoPlace&) const { return facts.noPlaceCount > 0; }
};

}  // namespace

Narrowing::Narrowing(NavSelection selection, std::string_view searchText)
    : selection_(std::move(selection)), words_(wordsOf(searchText)) {}

bool Narrowing::isSelected(const GroupFacts& facts) const {
  return std::visit(Selected{facts}, selection_);
}

bool Narrowing::shows(const GroupFacts& facts) const {
  return isSelected(facts) && holdsAll(facts.searchKey, words_);
}

std::vector<SearchSuggestion> suggestionsFor(std::string_view searchText, const NavOutline& outline,
                                             const std::string& localeID) {
  using Kind = SearchSuggestion::Kind;
  const auto words = wordsOf(searchText);
  std::vector<SearchSuggestion> suggestions;
  if (words.empty()) return suggestions;
  suggest(suggestions, Kind::place, words, outline.places,
          [](const NavOutline::Place& place) { return place.name; });
  for (const NavOutline::Year& year : outline.years) {
    suggest(suggestions, Kind::month, words, year.months,
            [&](const NavOutline::Month& month) { return monthTitle(month, localeID); });
  }
  suggest(suggestions, Kind::year, words, outline.years,
          [](const NavOutline::Year& year) { return std::to_string(year.year); });
  return suggestions;
}

}  // namespace tavrix
