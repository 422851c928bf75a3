#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/Run.h"

namespace tavrix::window {

/// The first lines of a summary.
struct Headline {
  std::string verdict;
  std::string written;  ///< how much was written, and how long that took

  friend bool operator==(const Headline&, const Headline&) = default;
};

/// The result of a run in words.
struct SummaryFacts {
  enum class Tone {
    good,     ///< everything is in place
    warning,  ///< the run was stopped
    bad,      ///< something did not get there
  };
  /// A number of files; the rows add up as TransferTally does.
  struct Number {
    int depth = 0;  ///< of its part in the whole
    std::string label;
    std::uint64_t count = 0;

    friend bool operator==(const Number&, const Number&) = default;
  };
  struct File {
    std::string folder;  ///< empty if the file belongs directly into the destination
    std::string name;
    std::string detail;  ///< what the reason of its group does not say; often empty

    friend bool operator==(const File&, const File&) = default;
  };
  /// The files with the same reason.
  struct Reason {
    std::string text;
    std::vector<File> files;

    friend bool operator==(const Reason&, const Reason&) = default;
  };

  Tone tone = Tone::good;
  Headline headline;
  std::string advice;  ///< what to do next; may be empty
  bool canRetry = false;
  std::vector<Number> numbers;  ///< without rows of zero, except the main ones
  std::vector<Reason> failures;
  std::vector<Reason> keptOriginals;
  std::vector<std::string> notes;

  friend bool operator==(const SummaryFacts&, const SummaryFacts&) = default;
};

Headline headlineOf(Language language, const Run& run);

/// Returns the summary of a run that has ended. The cost depends on the number of its files.
SummaryFacts summaryOf(Language language, const Run& run, bool isPhone);

}  // namespace tavrix::window
