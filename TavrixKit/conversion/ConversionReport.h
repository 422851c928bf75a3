#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "conversion/Conversion.h"

namespace tavrix {

/// What the process of a conversion tells its parent, one line each: "progress 0.25", and at the
/// end one of "done WIDTH HEIGHT MILLISECONDS CROPPED", "kept REASON" and "unwritable CODE".
namespace ConversionReport {

struct Unwritable {
  int code = 0;  ///< errno
  friend bool operator==(const Unwritable&, const Unwritable&) = default;
};
using Ending = std::variant<ConversionResult, ConversionFailure, Unwritable>;

std::string progressLine(double fraction);
std::string endingLine(const Ending& ending);

/// Takes the lines apart as they arrive. The process is not to be believed more than its file: what
/// is no such line, or comes after the end, is passed over, and a line has its greatest length.
class Reader {
 public:
  /// Gives the last progress among the bytes.
  std::optional<double> add(std::string_view bytes);
  const std::optional<Ending>& ending() const { return ending_; }

 private:
  void take(std::string_view line, std::optional<double>& progress);

  std::string line_;
  std::optional<Ending> ending_;
};

}  // namespace ConversionReport

}  // namespace tavrix
