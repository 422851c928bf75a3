#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "conversion/Conversion.h"

namespace tavrix {

/// The report of a conversion process to its parent, in lines: "progress 0.25", and as the last one
/// "done WIDTH HEIGHT MILLISECONDS CROPPED", "kept REASON" or "unwritable CODE".
namespace ConversionReport {

struct Unwritable {
  int code = 0;  ///< errno
  friend bool operator==(const Unwritable&, const Unwritable&) = default;
};
using Ending = std::variant<ConversionResult, ConversionFailure, Unwritable>;

std::string progressLine(double fraction);
std::string endingLine(const Ending& ending);

/// Parses the lines as they arrive. The process is trusted no more than its file: malformed lines
/// and lines after the ending are skipped, and the length of a line is limited.
class Reader {
 public:
  /// Adds received bytes. Returns the last progress among them, or nullopt if there is none.
  std::optional<double> add(std::string_view bytes);
  const std::optional<Ending>& ending() const { return ending_; }

 private:
  void take(std::string_view line, std::optional<double>& progress);

  std::string line_;
  std::optional<Ending> ending_;
};

}  // namespace ConversionReport

}  // namespace tavrix
