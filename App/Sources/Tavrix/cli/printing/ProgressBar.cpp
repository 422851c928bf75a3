#include "cli/printing/ProgressBar.h"

#include <algorithm>
#include <cmath>

#include "cli/printing/Table.h"
#include "cli/printing/TerminalLine.h"
#include "cli/sentences/CliSentences.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

constexpr std::chrono::milliseconds measureInterval{500};
/// The weight of the newest measurement relative to the earlier ones.
constexpr double newestShare = 0.3;
constexpr int barColumns = 20;
constexpr int narrowestName = 8;

}  // namespace

std::string barText(std::uint64_t done, std::uint64_t total) {
  const double share =
      total == 0 ? 0 : std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
  const int full = static_cast<int>(std::floor(share * barColumns));
  std::string bar;
  for (int i = 0; i < barColumns; ++i) bar += i < full ? "█" : "░";
  return bar;
}

std::string durationText(std::chrono::seconds duration) {
  const std::chrono::hh_mm_ss time{duration};
  if (time.hours().count() == 0) {
    return fmt::format("{}:{:02}", time.minutes().count(), time.seconds().count());
  }
  return fmt::format("{}:{:02}:{:02}", time.hours().count(), time.minutes().count(),
                     time.seconds().count());
}

ProgressBar::~ProgressBar() {
  try {
    clear();
  } catch (const std::exception&) {
    // If the terminal is gone, there is nothing to clear.
    isShown_ = false;
  }
}

void ProgressBar::measureSpeed(std::uint64_t bytesDone, std::chrono::steady_clock::time_point now) {
  if (!measuredAt_) {
    measuredAt_ = now;
    measuredBytes_ = bytesDone;
    return;
  }
  const std::chrono::duration<double> elapsed = now - *measuredAt_;
  if (elapsed < measureInterval) return;
  const auto bytes = static_cast<double>(bytesDone - std::min(bytesDone, measuredBytes_));
  const double speed = bytes / elapsed.count();
  bytesPerSecond_ =
      bytesPerSecond_ == 0 ? speed : newestShare * speed + (1 - newestShare) * bytesPerSecond_;
  measuredAt_ = now;
  measuredBytes_ = bytesDone;
}

std::string ProgressBar::packingText(const TransferProgressSnapshot& progress) const {
  constexpr double scale = 1'000'000;
  const double share = progress.stageFraction.value_or(0);
  std::string line = barText(static_cast<std::uint64_t>(share * scale), std::uint64_t{1'000'000});
  line +=
      " " + say(language_, sentences::progressPacking, numberText(language_, progress.packedGroups),
                counted(language_, progress.packGroupsTotal, sentences::groupsOfTotal));
  return withName(std::move(line), progress);
}

std::string ProgressBar::withName(std::string line,
                                  const TransferProgressSnapshot& progress) const {
  const int room = columns_ - displayWidth(line) - 3;
  if (progress.currentFileName && room >= narrowestName) {
    const std::string name = printable(*progress.currentFileName);
    const bool isConverting = progress.stage == TransferStage::converting;
    const int hundredths = static_cast<int>(progress.stageFraction.value_or(0) * 100);
    line += " · " + shortened(isConverting
                                  ? say(language_, sentences::progressConverting, name, hundredths)
                                  : name,
                              room);
  }
  return shortened(line, columns_);
}

std::string ProgressBar::text(const TransferProgressSnapshot& progress) const {
  if (progress.stage == TransferStage::packing) return packingText(progress);
  std::string line = barText(progress.bytesDone, progress.bytesTotal) + " ";
  line += say(language_, sentences::progressCounts, numberText(language_, progress.filesDone),
              counted(language_, progress.filesTotal, sentences::filesOfTotal),
              bytesText(language_, progress.bytesDone), bytesText(language_, progress.bytesTotal));
  if (bytesPerSecond_ >= 1) {
    const std::uint64_t left =
        progress.bytesTotal - std::min(progress.bytesTotal, progress.bytesDone);
    const std::chrono::seconds duration{
        static_cast<std::int64_t>(std::ceil(static_cast<double>(left) / bytesPerSecond_))};
    line += " · " + say(language_, sentences::progressSpeed,
                        bytesText(language_, static_cast<std::uint64_t>(bytesPerSecond_)));
    line += " · " + say(language_, sentences::progressLeft, durationText(duration));
  }
  return withName(std::move(line), progress);
}

void ProgressBar::show(const TransferProgressSnapshot& progress,
                       std::chrono::steady_clock::time_point now) {
  measureSpeed(progress.bytesDone, now);
  if (drawnAt_ && now - *drawnAt_ < drawInterval) return;
  drawnAt_ = now;
  isShown_ = true;
  terminal_.write(std::string{clearLine} + text(progress));
}

void ProgressBar::clear() {
  if (!isShown_) return;
  isShown_ = false;
  terminal_.write(clearLine);
}

}  // namespace tavrix::cli
