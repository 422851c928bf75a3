#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace tavrix {

/// The entries of the sidebar. All counts are files.
struct NavOutline {
  struct Month {
    int year = 0;
    int month = 0;  ///< 1 to 12
    std::uint64_t count = 0;
    friend bool operator==(const Month&, const Month&) = default;
  };
  struct Year {
    int year = 0;
    std::uint64_t count = 0;
    std::vector<Month> months;  ///< latest first
    friend bool operator==(const Year&, const Year&) = default;
  };
  struct Place {
    std::string name;
    std::uint64_t count = 0;
    friend bool operator==(const Place&, const Place&) = default;
  };

  std::vector<Year> years;         ///< latest first
  std::vector<Place> places;       ///< most files first, then by name
  std::uint64_t noPlaceCount = 0;  ///< files of shots without a place or whose place has no name
  std::uint64_t total = 0;

  friend bool operator==(const NavOutline&, const NavOutline&) = default;
};

/// The selection in the sidebar. A group is shown if any of its shots belongs to the selection.
namespace nav_selection {
struct Year {
  int year = 0;
  friend bool operator==(const Year&, const Year&) = default;
};
struct Month {
  int year = 0;
  int month = 0;
  friend bool operator==(const Month&, const Month&) = default;
};
struct Place {
  std::string name;
  friend bool operator==(const Place&, const Place&) = default;
};
struct All {
  friend bool operator==(const All&, const All&) = default;
};
struct NoPlace {
  friend bool operator==(const NoPlace&, const NoPlace&) = default;
};
}  // namespace nav_selection
using NavSelection = std::variant<nav_selection::All, nav_selection::Year, nav_selection::Month,
                                  nav_selection::Place, nav_selection::NoPlace>;

/// A line under the search field.
struct SearchSuggestion {
  enum class Kind { place, month, year };

  Kind kind = Kind::place;
  std::string title;
  std::uint64_t count = 0;  ///< files

  friend bool operator==(const SearchSuggestion&, const SearchSuggestion&) = default;
};

}  // namespace tavrix
