#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "model/NavOutline.h"

namespace tavrix::window {

/// A line of the sidebar.
struct OutlineRow {
  enum class Kind { all, years, year, month, places, place, noPlace };

  Kind kind = Kind::all;
  int year = 0;
  int month = 0;            ///< 1 to 12
  std::string name{};       ///< of a place
  std::uint64_t files = 0;  ///< 0 for the titles of years and of places
  bool isExpanded = false;

  /// Returns true if the row has rows of its own below it.
  bool canExpand() const { return isTitle() || kind == Kind::year; }
  bool isTitle() const { return kind == Kind::years || kind == Kind::places; }
  friend bool operator==(const OutlineRow&, const OutlineRow&) = default;
};

/// The rows that the user has expanded or collapsed.
struct OutlineFolds {
  bool hasYears = true;
  bool hasPlaces = true;
  std::map<int, bool> years{};  ///< a year that is missing is expanded if it is the latest
};

/// Returns the lines in their order: all, the years with their months, the places.
std::vector<OutlineRow> outlineRows(const NavOutline& outline, const OutlineFolds& folds);

/// Returns true if both rows stand for the same years, months or places.
bool isSameRow(const OutlineRow& a, const OutlineRow& b);

/// Returns what the row selects, or nullopt for a title.
std::optional<NavSelection> selectionOf(const OutlineRow& row);

/// Returns the row of a selection. If the row is hidden, returns the row that hides it. Returns -1
/// if the outline does not have the selection.
int rowOf(const std::vector<OutlineRow>& rows, const NavSelection& selection);

/// The rows between the equal beginnings and endings of two lists.
struct OutlineChange {
  int first = 0;
  int removed = 0;
  int inserted = 0;
};
OutlineChange differenceOf(const std::vector<OutlineRow>& before,
                           const std::vector<OutlineRow>& after);

}  // namespace tavrix::window
