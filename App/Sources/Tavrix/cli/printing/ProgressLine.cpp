#include "cli/printing/ProgressLine.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "cli/printing/Table.h"
#include "cli/printing/TerminalLine.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

constexpr std::string_view separator = " · ";
constexpr int separatorColumns = 3;
constexpr int widestBar = 20;
constexpr int narrowestBar = 10;

std::string barText(double share, int columns) {
  const int full = static_cast<int>(std::floor(share * columns));
  std::string bar;
  for (int i = 0; i < columns; ++i) bar += i < full ? "█" : "░";
  return bar;
}

/// Returns which parts fit into the room, chosen by rank.
std::vector<bool> chosenParts(const std::vector<ProgressPart>& parts, int& room) {
  std::vector<std::size_t> byRank(parts.size());
  for (std::size_t i = 0; i < parts.size(); ++i) byRank[i] = i;
  std::ranges::stable_sort(byRank, {}, [&](std::size_t i) { return parts[i].rank; });
  std::vector<bool> isChosen(parts.size());
  for (const std::size_t i : byRank) {
    const int needed = displayWidth(parts[i].text) + separatorColumns;
    // A part of a higher rank does not take the place of one that is more important.
    if (needed > room) break;
    room -= needed;
    isChosen[i] = true;
  }
  return isChosen;
}

}  // namespace

ProgressLine::~ProgressLine() {
  try {
    clear();
  } catch (const std::exception&) {
    // If the terminal is gone, there is nothing to clear.
    isShown_ = false;
  }
}

bool ProgressLine::isDue(std::chrono::steady_clock::time_point now) {
  if (!messages_.showsProgress() || (drawnAt_ && now - *drawnAt_ < drawInterval)) return false;
  drawnAt_ = now;
  return true;
}

bool ProgressLine::isDueAtEnd(bool isDone) {
  const bool isForPrograms = messages_.showsProgress() && form().progress == ProgressForm::json;
  return isForPrograms && isDone && !std::exchange(isEndWritten_, true);
}

void ProgressLine::draw(const std::string& text) {
  isShown_ = true;
  messages_.writeOpen(std::string{clearLine} + text);
}

void ProgressLine::clear() {
  if (std::exchange(isShown_, false)) messages_.writeOpen(clearLine);
}

std::string progressLine(int columns, double share, const std::string& counts,
                         const std::vector<ProgressPart>& parts) {
  int room = columns - displayWidth(counts) - narrowestBar - 1;
  if (room < 0) return shortened(counts, columns);
  const std::vector<bool> isChosen = chosenParts(parts, room);
  std::string line = barText(share, std::min(widestBar, narrowestBar + room)) + ' ' + counts;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (isChosen[i]) line.append(separator).append(parts[i].text);
  }
  return line;
}

double shareOf(std::uint64_t done, std::uint64_t total) {
  return total == 0 ? 0 : std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
}

}  // namespace tavrix::cli
