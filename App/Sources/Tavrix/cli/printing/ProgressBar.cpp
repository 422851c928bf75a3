#include "cli/printing/ProgressBar.h"

#include <algorithm>
#include <cmath>

#include "cli/printing/Table.h"
#include "cli/sentences/CliSentences.h"
#include "foundation/Text.h"
#include "text/Measures.h"

namespace tavrix::cli {
namespace {

constexpr std::chrono::milliseconds measureInterval{500};
/// The weight of the newest measurement relative to the earlier ones.
constexpr double newestShare = 0.3;
constexpr int longestName = 40;

/// The ranks of the parts: the name of the file stays longest.
enum Rank { nameRank, leftRank, speedRank, sizeRank };

std::string_view textOf(TransferStage stage) {
  switch (stage) {
    case TransferStage::copying:
      return "copying";
    case TransferStage::verifying:
      return "verifying";
    case TransferStage::converting:
      return "converting";
    case TransferStage::packing:
      return "packing";
  }
  return {};
}

}  // namespace

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

std::optional<std::chrono::seconds> ProgressBar::timeLeft(
    const TransferProgressSnapshot& progress) const {
  if (bytesPerSecond_ < 1) return std::nullopt;
  const std::uint64_t left =
      progress.bytesTotal - std::min(progress.bytesTotal, progress.bytesDone);
  return std::chrono::seconds{
      static_cast<std::int64_t>(std::ceil(static_cast<double>(left) / bytesPerSecond_))};
}

std::string ProgressBar::nameText(const TransferProgressSnapshot& progress) const {
  if (!progress.currentFileName) return {};
  std::string name = shortened(printable(*progress.currentFileName), longestName);
  if (progress.stage != TransferStage::converting) return name;
  const int hundredths = static_cast<int>(progress.stageFraction.value_or(0) * 100);
  return say(line_.form().language, sentences::progressConverting, name, hundredths);
}

std::string ProgressBar::packingText(const TransferProgressSnapshot& progress) const {
  const Language language = line_.form().language;
  const std::string counts =
      say(language, sentences::progressPacking, numberText(language, progress.packedGroups),
          counted(language, progress.packGroupsTotal, sentences::groupsOfTotal));
  std::vector<ProgressPart> parts;
  if (progress.currentFileName) parts.push_back({nameText(progress), nameRank});
  return progressLine(line_.columns(), progress.stageFraction.value_or(0), counts, parts);
}

std::string ProgressBar::text(const TransferProgressSnapshot& progress) const {
  if (progress.stage == TransferStage::packing) return packingText(progress);
  const Language language = line_.form().language;
  const std::string counts =
      say(language, sentences::progressCounts, numberText(language, progress.filesDone),
          counted(language, progress.filesTotal, sentences::filesOfTotal));
  std::vector<ProgressPart> parts{
      {say(language, sentences::progressCounts, bytesText(language, progress.bytesDone),
           bytesText(language, progress.bytesTotal)),
       sizeRank}};
  if (const auto left = timeLeft(progress)) {
    parts.push_back({say(language, sentences::progressSpeed,
                         bytesText(language, static_cast<std::uint64_t>(bytesPerSecond_))),
                     speedRank});
    parts.push_back({say(language, sentences::progressLeft, durationText(*left)), leftRank});
  }
  if (progress.currentFileName) parts.push_back({nameText(progress), nameRank});
  return progressLine(line_.columns(), shareOf(progress.bytesDone, progress.bytesTotal), counts,
                      parts);
}

void ProgressBar::addFields(JsonWriter& json, const TransferProgressSnapshot& progress) const {
  json.field("stage", textOf(progress.stage));
  json.field("filesDone", progress.filesDone).field("filesTotal", progress.filesTotal);
  json.field("bytesDone", progress.bytesDone).field("bytesTotal", progress.bytesTotal);
  if (progress.stage == TransferStage::packing) {
    json.field("archivesDone", progress.packedGroups);
    json.field("archivesTotal", progress.packGroupsTotal);
  }
  json.field("stageFraction", progress.stageFraction);
  json.field("currentFile", progress.currentFileName);
  if (const auto left = timeLeft(progress)) {
    json.field("bytesPerSecond", static_cast<std::uint64_t>(bytesPerSecond_));
    json.field("secondsLeft", left->count());
  }
}

void ProgressBar::show(const TransferProgressSnapshot& progress,
                       std::chrono::steady_clock::time_point now) {
  measureSpeed(progress.bytesDone, now);
  // A program waits for the last object.
  const bool isLast = progress.filesTotal > 0 && progress.filesDone == progress.filesTotal;
  if (!line_.isDue(now) && !line_.isDueAtEnd(isLast)) return;
  line_.write([&] { return text(progress); }, "progress",
              [&](JsonWriter& json) { addFields(json, progress); });
}

}  // namespace tavrix::cli
