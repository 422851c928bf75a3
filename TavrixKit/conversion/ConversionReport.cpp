#include "conversion/ConversionReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

namespace tavrix::ConversionReport {
namespace {

constexpr std::size_t longestLine = 128;

/// Removes the next word from the line and returns it.
std::string_view nextWord(std::string_view& line) {
  const std::string_view word = line.substr(0, line.find(' '));
  line.remove_prefix(std::min(word.size() + 1, line.size()));
  return word;
}

template <typename Number>
bool readNumber(std::string_view& line, Number& value) {
  const std::string_view word = nextWord(line);
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  return error == std::errc{} && end == word.data() + word.size();
}

std::optional<Ending> readResult(std::string_view line) {
  ConversionResult result;
  int isCropped = 0;
  const bool isWhole = readNumber(line, result.width) && readNumber(line, result.height) &&
                       readNumber(line, result.milliseconds) && readNumber(line, isCropped);
  result.isCropped = isCropped != 0;
  return isWhole ? std::optional<Ending>{result} : std::nullopt;
}

std::optional<Ending> readFailure(std::string_view name) {
  for (int i = 0; i <= static_cast<int>(ConversionFailure::failed); ++i) {
    const auto failure = static_cast<ConversionFailure>(i);
    if (textOf(failure) == name) return failure;
  }
  return std::nullopt;
}

std::optional<Ending> readUnwritable(std::string_view line) {
  Unwritable unwritable;
  return readNumber(line, unwritable.code) ? std::optional<Ending>{unwritable} : std::nullopt;
}

struct LineOf {
  std::string operator()(const ConversionResult& result) const {
    return fmt::format("done {} {} {} {}\n", result.width, result.height, result.milliseconds,
                       result.isCropped ? 1 : 0);
  }
  std::string operator()(ConversionFailure failure) const {
    return fmt::format("kept {}\n", textOf(failure));
  }
  std::string operator()(const Unwritable& unwritable) const {
    return fmt::format("unwritable {}\n", unwritable.code);
  }
};

}  // namespace

std::string progressLine(double fraction) { return fmt::format("progress {:.3f}\n", fraction); }

std::string endingLine(const Ending& ending) { return std::visit(LineOf{}, ending); }

std::optional<double> Reader::add(std::string_view bytes) {
  std::optional<double> progress;
  for (const char c : bytes) {
    if (c == '\n') {
      take(line_, progress);
      line_.clear();
    } else if (line_.size() < longestLine) {
      line_ += c;
    }
  }
  return progress;
}

void Reader::take(std::string_view line, std::optional<double>& progress) {
  if (ending_) return;
  const std::string_view word = nextWord(line);
  double fraction = 0;
  if (word == "done") ending_ = readResult(line);
  if (word == "kept") ending_ = readFailure(line);
  if (word == "unwritable") ending_ = readUnwritable(line);
  if (word == "progress" && readNumber(line, fraction) && fraction >= 0 && fraction <= 1)
    progress = fraction;
}

}  // namespace tavrix::ConversionReport
