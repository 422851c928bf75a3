#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "cli/printing/Messages.h"

namespace tavrix::cli {

/// The progress of one long piece of work on standard error, written about ten times a second in
/// the form that the call asked for. The destructor erases the line from the terminal.
class ProgressLine {
 public:
  /// `messages` must outlive this object.
  explicit ProgressLine(const Messages& messages) : messages_(messages) {}
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
  ~ProgressLine();

  const Messages::Form& form() const { return messages_.form(); }
  /// Returns the columns of the terminal, or 0 if there is none.
  int columns() const { return messages_.form().columns.value_or(0); }
  /// Returns true if enough time has passed since the last line. Then the caller must write one.
  bool isDue(std::chrono::steady_clock::time_point now);
  /// Returns true if the work is done, and no line for programs says so yet. Then the caller must
  /// write one.
  bool isDueAtEnd(bool isDone);
  /// Writes a line: the text that `text()` returns, or the JSON object of the given type.
  template <typename Text, typename AddFields>
  void write(const Text& text, std::string_view type, const AddFields& addFields) {
    if (form().progress == ProgressForm::json) return messages_.writeObject(type, addFields);
    draw(text());
  }
  /// Removes the line.
  void clear();

 private:
  void draw(const std::string& text);

  const Messages& messages_;
  bool isShown_ = false;
  bool isEndWritten_ = false;
  std::optional<std::chrono::steady_clock::time_point> drawnAt_;
};

/// A part of a line of progress that is left out if the terminal is too narrow for it.
struct ProgressPart {
  std::string text;
  int rank = 0;  ///< parts of a lower rank stay longer
};

/// Returns a line with a bar that is filled to `share` (0 to 1), the counts and, in their order,
/// those parts for which there is room. No part is cut. The bar takes the rest, at most 20 columns.
/// In fewer columns than a bar and the counts need, the line shows the counts alone.
std::string progressLine(int columns, double share, const std::string& counts,
                         const std::vector<ProgressPart>& parts);
/// Returns the share of the work that is done, 0 if there is none.
double shareOf(std::uint64_t done, std::uint64_t total);

}  // namespace tavrix::cli
