#include "interface/outline/OutlineRows.h"

#include <algorithm>

namespace tavrix::window {
namespace {

using Kind = OutlineRow::Kind;

bool isExpanded(const OutlineFolds& folds, int year, bool isLatest) {
  const auto found = folds.years.find(year);
  return found == folds.years.end() ? isLatest : found->second;
}

void addYears(std::vector<OutlineRow>& rows, const NavOutline& outline, const OutlineFolds& folds) {
  if (outline.years.empty()) return;
  rows.push_back({.kind = Kind::years, .isExpanded = folds.hasYears});
  if (!folds.hasYears) return;
  for (const NavOutline::Year& year : outline.years) {
    const bool isOpen = isExpanded(folds, year.year, &year == outline.years.data());
    rows.push_back(
        {.kind = Kind::year, .year = year.year, .files = year.count, .isExpanded = isOpen});
    if (!isOpen) continue;
    for (const NavOutline::Month& month : year.months) {
      rows.push_back(
          {.kind = Kind::month, .year = month.year, .month = month.month, .files = month.count});
    }
  }
}

void addPlaces(std::vector<OutlineRow>& rows, const NavOutline& outline,
               const OutlineFolds& folds) {
  if (outline.places.empty() && outline.noPlaceCount == 0) return;
  rows.push_back({.kind = Kind::places, .isExpanded = folds.hasPlaces});
  if (!folds.hasPlaces) return;
  for (const NavOutline::Place& place : outline.places) {
    rows.push_back({.kind = Kind::place, .name = place.name, .files = place.count});
  }
  if (outline.noPlaceCount > 0) {
    rows.push_back({.kind = Kind::noPlace, .files = outline.noPlaceCount});
  }
}

/// Returns the row of a selection as if it were shown.
OutlineRow rowFor(const NavSelection& selection) {
  if (const auto* const year = std::get_if<nav_selection::Year>(&selection)) {
    return {.kind = Kind::year, .year = year->year};
  }
  if (const auto* const month = std::get_if<nav_selection::Month>(&selection)) {
    return {.kind = Kind::month, .year = month->year, .month = month->month};
  }
  if (const auto* const place = std::get_if<nav_selection::Place>(&selection)) {
    return {.kind = Kind::place, .name = place->name};
  }
  const bool isAll = std::holds_alternative<nav_selection::All>(selection);
  return {.kind = isAll ? Kind::all : Kind::noPlace};
}

/// Returns true if the row hides the other one while it is collapsed.
bool hides(const OutlineRow& row, const OutlineRow& hidden) {
  if (row.isExpanded) return false;
  const bool isDate = hidden.kind == Kind::year || hidden.kind == Kind::month;
  const bool isPlace = hidden.kind == Kind::place || hidden.kind == Kind::noPlace;
  return (row.kind == Kind::years && isDate) || (row.kind == Kind::places && isPlace) ||
         (row.kind == Kind::year && hidden.kind == Kind::month && row.year == hidden.year);
}

}  // namespace

std::vector<OutlineRow> outlineRows(const NavOutline& outline, const OutlineFolds& folds) {
  std::vector<OutlineRow> rows{{.kind = Kind::all, .files = outline.total}};
  addYears(rows, outline, folds);
  addPlaces(rows, outline, folds);
  return rows;
}

bool isSameRow(const OutlineRow& a, const OutlineRow& b) {
  return a.kind == b.kind && a.year == b.year && a.month == b.month && a.name == b.name;
}

std::optional<NavSelection> selectionOf(const OutlineRow& row) {
  switch (row.kind) {
    case Kind::all:
      return nav_selection::All{};
    case Kind::year:
      return nav_selection::Year{row.year};
    case Kind::month:
      return nav_selection::Month{row.year, row.month};
    case Kind::place:
      return nav_selection::Place{row.name};
    case Kind::noPlace:
      return nav_selection::NoPlace{};
    case Kind::years:
    case Kind::places:
      break;
  }
  return std::nullopt;
}

int rowOf(const std::vector<OutlineRow>& rows, const NavSelection& selection) {
  const OutlineRow wanted = rowFor(selection);
  const auto shown = std::find_if(rows.begin(), rows.end(), [&](const OutlineRow& row) {
    return isSameRow(row, wanted) || hides(row, wanted);
  });
  return shown == rows.end() ? -1 : static_cast<int>(shown - rows.begin());
}

OutlineChange differenceOf(const std::vector<OutlineRow>& before,
                           const std::vector<OutlineRow>& after) {
  const auto first =
      std::mismatch(before.begin(), before.end(), after.begin(), after.end(), isSameRow);
  const auto last =
      std::mismatch(before.rbegin(), std::make_reverse_iterator(first.first), after.rbegin(),
                    std::make_reverse_iterator(first.second), isSameRow);
  return {.first = static_cast<int>(first.first - before.begin()),
          .removed = static_cast<int>(last.first.base() - first.first),
          .inserted = static_cast<int>(last.second.base() - first.second)};
}

}  // namespace tavrix::window
