#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/GroupFacts.h"
#include "model/NavOutline.h"

namespace tavrix {

/// Which folders the search field and the sidebar leave.
class Narrowing {
 public:
  /// A folder is found when its name, its places and its months hold every word of the text, letter
  /// case aside.
  Narrowing(NavSelection selection, std::string_view searchText);

  bool shows(const GroupFacts& facts) const;

 private:
  bool isSelected(const GroupFacts& facts) const;

  NavSelection selection_;
  std::vector<std::string> words_;
};

/// What the text may be about: places first, then months, then years; those of most files first. No
/// suggestions for a text without words.
std::vector<SearchSuggestion> suggestionsFor(std::string_view searchText, const NavOutline& outline,
                                             const std::string& localeID);

}  // namespace tavrix
