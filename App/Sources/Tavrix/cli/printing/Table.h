#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/JsonWriter.h"

namespace tavrix::cli {

/// Rows of text in aligned columns. Widths are terminal columns: a wide character has width 2.
class Table {
 public:
  struct Column {
    std::string title;
    bool isNumber = false;   ///< right-aligned
    bool mayShrink = false;  ///< shortened if the terminal is too narrow
    bool wraps = false;      ///< broken into several lines if the terminal is too narrow
  };
  using Cells = std::vector<std::string>;

  /// Without `terminalColumns` nothing is shortened.
  Table(std::vector<Column> columns, std::optional<int> terminalColumns)
      : columns_(std::move(columns)), terminalColumns_(terminalColumns) {}

  /// Writes titles and rows. Calls `cellsOf` twice per row, first to measure and then to write, so
  /// that a long table is never held in memory.
  void write(TextSink& sink, std::size_t rowCount,
             const std::function<Cells(std::size_t row)>& cellsOf) const;

 private:
  struct Widths {
    std::vector<int> columns;
    std::vector<int> narrowest;  ///< to which each column may shrink
  };

  Widths measured(std::size_t rowCount, const std::function<Cells(std::size_t)>& cellsOf) const;
  /// Returns the widths of the columns, made smaller to fit into the terminal.
  std::vector<int> shrunk(Widths widths) const;
  std::string line(const Cells& cells, const std::vector<int>& widths) const;
  /// Returns a row, which has several lines if a cell is broken.
  std::string lines(const Cells& cells, const std::vector<int>& widths) const;

  std::vector<Column> columns_;
  std::optional<int> terminalColumns_;
};

/// Returns the text shortened to at most `columns` columns, with "…" in place of its middle.
std::string shortened(const std::string& text, int columns);
/// Returns the text padded with spaces to a width, on its left if `toTheRight` and on its right
/// otherwise.
std::string padded(const std::string& text, int columns, bool toTheRight);

}  // namespace tavrix::cli
