#pragma once

#include "interface/run/SummaryFacts.h"

namespace tavrix::window {

/// One line of the summary below its verdict.
struct SummaryRow {
  enum class Kind { title, number, reason, file, note };

  Kind kind = Kind::title;
  std::string text;
  std::string aside{};  ///< the number, or the folder of a file
  std::string detail{};
  int depth = 0;

  friend bool operator==(const SummaryRow&, const SummaryRow&) = default;
};

/// Returns the lines: what did not get there first, then the notes and the numbers.
std::vector<SummaryRow> summaryRows(Language language, const SummaryFacts& facts);

}  // namespace tavrix::window
