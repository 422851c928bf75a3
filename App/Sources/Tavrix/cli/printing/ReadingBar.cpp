#include "cli/printing/ReadingBar.h"

#include <cmath>
#include <vector>

#include "cli/printing/ProgressBar.h"
#include "cli/printing/Table.h"
#include "cli/printing/TerminalLine.h"
#include "cli/sentences/CliSentences.h"
#include "foundation/Text.h"
#include "text/SourceSentences.h"

namespace tavrix::cli {
namespace {

/// The speed is not meaningful before this time.
constexpr std::chrono::duration<double> measureTime{1};

}  // namespace

ReadingBar::~ReadingBar() {
  if (!isShown_) return;
  try {
    terminal_.write(clearLine);
  } catch (const std::exception&) {
    // If the terminal is gone, there is nothing to clear.
    isShown_ = false;
  }
}

std::string ReadingBar::text(const MetadataPass::Progress& progress,
                             std::chrono::duration<double> elapsed) const {
  const std::string counts =
      say(language_, sentences::readingCounts, numberText(language_, progress.done()),
          counted(language_, progress.total, sentences::filesOfTotal));
  std::vector<std::string> parts;
  if (elapsed >= measureTime && progress.read > 0) {
    const double speed = static_cast<double>(progress.read) / elapsed.count();
    const auto left = static_cast<double>(progress.total - progress.done()) / speed;
    parts.push_back(
        say(language_, sentences::readingSpeed,
            counted(language_, static_cast<std::uint64_t>(std::round(speed)), sentences::files)));
    parts.push_back(say(language_, sentences::progressLeft,
                        durationText(std::chrono::seconds{std::llround(std::ceil(left))})));
  }
  if (progress.hits > 0) {
    parts.push_back(say(language_, sentences::readingHits, numberText(language_, progress.hits)));
  }
  std::string line = barText(progress.done(), progress.total) + " " + counts;
  // A truncated number would be wrong, so parts that do not fit are omitted.
  if (displayWidth(line) > columns_) line = counts;
  for (const std::string& part : parts) {
    if (displayWidth(line) + displayWidth(part) + 3 > columns_) break;
    line += " · " + part;
  }
  return shortened(line, columns_);
}

void ReadingBar::show(const MetadataPass::Progress& progress,
                      std::chrono::steady_clock::time_point now) {
  if (progress.hits == progress.total) return;
  if (!begunAt_) begunAt_ = now;
  if (drawnAt_ && now - *drawnAt_ < drawInterval) return;
  drawnAt_ = now;
  isShown_ = true;
  terminal_.write(std::string{clearLine} + text(progress, now - *begunAt_));
}

}  // namespace tavrix::cli
