#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/JsonWriter.h"

namespace tavrix::cli {

/// Rows of text in aligned columns. Widths are those of a terminal: a wide character counts two.
class Table {
 public:
  struct Column {
    std::string title;
    bool isNumber = false;   ///< aligned to the right
    bool mayShrink = false;  ///< shortened where the terminal is too narrow
  };
  using Cells = std::vector<std::string>;

  /// Without `terminalColumns` nothing is shortened.
  Table(std::vector<Column> columns, std::optional<int> terminalColumns)
      : columns_(std::move(columns)), terminalColumns_(terminalColumns) {}

  /// Writes titles and rows. `cellsOf` is asked twice for each row, first to measure, then to
  /// write, so that a long table is never in memory.
  void write(TextSink& sink, std::size_t rowCount,
             const std::function<Cells(std::size_t row)>& cellsOf) const;

 private:
  std::vector<int> measured(std::size_t rowCount,
                            const std::function<Cells(std::size_t)>& cellsOf) const;
  void shrink(std::vector<int>& widths) const;
  std::string line(const Cells& cells, const std::vector<int>& widths) const;

  std::vector<Column> columns_;
  std::optional<int> terminalColumns_;
};

/// The text in at most `columns` columns, with "…" in place of what had to go from its middle.
std::string shortened(const std::string& text, int columns);
/// The text with spaces to a width, on its left or on its right.
std::string padded(const std::string& text, int columns, bool toTheRight);

}  // namespace tavrix::cli
