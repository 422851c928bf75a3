#include "cli/printing/Table.h"

#include <algorithm>
#include <string_view>

#include "cli/call/Wrapping.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

constexpr int gap = 2;
constexpr int narrowestColumn = 8;
/// A longer word is broken rather than keeping its column wide.
constexpr int widestWord = 16;

int longestWord(const std::string& text) {
  int longest = 0;
  for (const std::string& word : wrapped(text, 1)) longest = std::max(longest, displayWidth(word));
  return longest;
}

/// Returns the leading, or the trailing, clusters that fit into the given number of columns.
std::string fitting(const std::vector<std::string_view>& clusters, int columns, bool fromEnd) {
  std::string result;
  for (std::size_t i = 0; i < clusters.size(); ++i) {
    const std::string_view cluster = fromEnd ? clusters[clusters.size() - 1 - i] : clusters[i];
    columns -= displayWidth(cluster);
    if (columns < 0) break;
    if (fromEnd) {
      result.insert(0, cluster);
    } else {
      result += cluster;
    }
  }
  return result;
}

}  // namespace

std::string shortened(const std::string& text, int columns) {
  if (displayWidth(text) <= columns) return text;
  if (columns <= 1) return columns == 1 ? "…" : "";
  // The end is more informative than the middle: it has numbers and extensions.
  const int tail = (columns - 1) / 2;
  const auto clusters = graphemeClusters(text);
  return fitting(clusters, columns - 1 - tail, false) + "…" + fitting(clusters, tail, true);
}

std::string padded(const std::string& text, int columns, bool toTheRight) {
  const int missing = std::max(0, columns - displayWidth(text));
  const std::string spaces(static_cast<std::size_t>(missing), ' ');
  return toTheRight ? spaces + text : text + spaces;
}

Table::Widths Table::measured(std::size_t rowCount,
                              const std::function<Cells(std::size_t)>& cellsOf) const {
  Widths widths;
  for (const Column& column : columns_) {
    widths.columns.push_back(displayWidth(column.title));
    widths.narrowest.push_back(narrowestColumn);
  }
  for (std::size_t row = 0; row < rowCount; ++row) {
    const Cells cells = cellsOf(row);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const std::string cell = printable(cells[i]);
      widths.columns[i] = std::max(widths.columns[i], displayWidth(cell));
      if (columns_[i].wraps) {
        const int word = std::min(longestWord(cell), widestWord);
        widths.narrowest[i] = std::max(widths.narrowest[i], word);
      }
    }
  }
  return widths;
}

std::vector<int> Table::shrunk(Widths widths) const {
  std::vector<int>& columns = widths.columns;
  if (!terminalColumns_) return columns;
  int excess = gap * static_cast<int>(columns.size() - 1) - *terminalColumns_;
  for (const int width : columns) excess += width;
  for (; excess > 0; --excess) {
    int* widest = nullptr;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const bool shrinks = columns_[i].mayShrink || columns_[i].wraps;
      if (!shrinks || columns[i] <= widths.narrowest[i]) continue;
      if (widest == nullptr || columns[i] > *widest) widest = &columns[i];
    }
    if (widest == nullptr) break;
    --*widest;
  }
  return columns;
}

std::string Table::line(const Cells& cells, const std::vector<int>& widths) const {
  std::string result;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::string cell = shortened(printable(cells[i]), widths[i]);
    result += padded(cell, widths[i], columns_[i].isNumber);
    result.append(gap, ' ');
  }
  result.erase(result.find_last_not_of(' ') + 1);
  return result + '\n';
}

std::string Table::lines(const Cells& cells, const std::vector<int>& widths) const {
  std::vector<Cells> rows{Cells(cells.size())};
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::vector<std::string> parts = columns_[i].wraps
                                               ? wrapped(printable(cells[i]), widths[i], true)
                                               : std::vector<std::string>{cells[i]};
    if (parts.size() > rows.size()) rows.resize(parts.size(), Cells(cells.size()));
    for (std::size_t row = 0; row < parts.size(); ++row) rows[row][i] = parts[row];
  }
  std::string text;
  for (const Cells& row : rows) text += line(row, widths);
  return text;
}

void Table::write(TextSink& sink, std::size_t rowCount,
                  const std::function<Cells(std::size_t)>& cellsOf) const {
  const std::vector<int> widths = shrunk(measured(rowCount, cellsOf));
  Cells titles;
  for (const Column& column : columns_) titles.push_back(column.title);
  sink.write(line(titles, widths));
  for (std::size_t row = 0; row < rowCount; ++row) sink.write(lines(cellsOf(row), widths));
}

}  // namespace tavrix::cli
