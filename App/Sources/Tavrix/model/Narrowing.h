#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/GroupFacts.h"
#include "model/NavOutline.h"

namespace tavrix {

/// The filter of folders by the search field and the sidebar.
class Narrowing {
 public:
  /// A folder matches if its name, places and months contain every word of the text, ignoring
  /// letter case.
  Narrowing(NavSelection selection, std::string_view searchText);

  bool shows(const GroupFacts& facts) const;

 private:
  bool isSelected(const GroupFacts& facts) const;

  NavSelection selection_;
  std::vector<std::string> words_;
};

/// Returns suggestions for the text: places first, then months, then years; within each kind, those
/// with the most files first. A text without words has no suggestions.
std::vector<SearchSuggestion> suggestionsFor(std::string_view searchText, const NavOutline& outline,
                                             const std::string& localeID);

}  // namespace tavrix
