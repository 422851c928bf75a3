#include "cli/printing/Table.h"

#include <algorithm>
#include <string_view>

#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

constexpr int gap = 2;
constexpr int narrowestColumn = 8;

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

std::vector<int> Table::measured(std::size_t rowCount,
                                 const std::function<Cells(std::size_t)>& cellsOf) const {
  std::vector<int> widths;
  widths.reserve(columns_.size());
  for (const Column& column : columns_) widths.push_back(displayWidth(column.title));
  for (std::size_t row = 0; row < rowCount; ++row) {
    const Cells cells = cellsOf(row);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      widths[i] = std::max(widths[i], displayWidth(printable(cells[i])));
    }
  }
  return widths;
}

void Table::shrink(std::vector<int>& widths) const {
  if (!terminalColumns_) return;
  int excess = gap * static_cast<int>(widths.size() - 1) - *terminalColumns_;
  for (const int width : widths) excess += width;
  for (; excess > 0; --excess) {
    int* widest = nullptr;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      if (!columns_[i].mayShrink || widths[i] <= narrowestColumn) continue;
      if (widest == nullptr || widths[i] > *widest) widest = &widths[i];
    }
    if (widest == nullptr) return;
    --*widest;
  }
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

void Table::write(TextSink& sink, std::size_t rowCount,
                  const std::function<Cells(std::size_t)>& cellsOf) const {
  std::vector<int> widths = measured(rowCount, cellsOf);
  shrink(widths);
  Cells titles;
  for (const Column& column : columns_) titles.push_back(column.title);
  sink.write(line(titles, widths));
  for (std::size_t row = 0; row < rowCount; ++row) sink.write(line(cellsOf(row), widths));
}

}  // namespace tavrix::cli
