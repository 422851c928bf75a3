#include "interface/run/ProgressText.h"

#include <algorithm>

#include "interface/words/TransferPageSentences.h"
#include "text/PlanSentences.h"

namespace tavrix::window {
namespace {

std::string countsText(Language language, std::uint64_t done, std::uint64_t total,
                       const CountedNoun& noun) {
  return say(language, sentences::filesDone, numberText(language, done),
             counted(language, total, noun));
}

std::string convertingText(Language language, const StagesOfRun& run) {
  if (run.conversions == 0) return say(language, sentences::stageOff);
  const std::uint64_t done = run.progress.convertedCount;
  if (done == 0 && run.progress.stage != TransferStage::converting) {
    return say(language, sentences::stageQueued);
  }
  return countsText(language, done, run.conversions, tavrix::sentences::filesOfTotal);
}

std::string packingText(Language language, const StagesOfRun& run) {
  if (!run.isPacked) return say(language, sentences::stageOff);
  if (run.progress.stage != TransferStage::packing) return say(language, sentences::stageQueued);
  return countsText(language, run.progress.packedGroups, run.progress.packGroupsTotal,
                    tavrix::sentences::groupsOfTotal);
}

}  // namespace

std::string filesDoneText(Language language, const TransferProgressSnapshot& progress) {
  return countsText(language, progress.filesDone, progress.filesTotal,
                    tavrix::sentences::filesOfTotal);
}

std::string bytesDoneText(Language language, const TransferProgressSnapshot& progress) {
  return say(language, sentences::bytesDone, bytesText(language, progress.bytesDone),
             bytesText(language, progress.bytesTotal));
}

std::array<std::string, 4> stageTitles(Language language) {
  return {say(language, sentences::stageCopying), say(language, sentences::stageVerifying),
          say(language, sentences::stageConverting), say(language, sentences::stagePacking)};
}

std::array<std::string, 4> stageTexts(Language language, const StagesOfRun& run) {
  const TransferProgressSnapshot& progress = run.progress;
  const std::string verified =
      say(language, sentences::verifiedOf, numberText(language, progress.verifiedCount),
          numberText(language, progress.filesTotal));
  return {filesDoneText(language, progress),
          progress.filesDone + progress.verifiedCount == 0 ? say(language, sentences::stageQueued)
                                                           : verified,
          convertingText(language, run), packingText(language, run)};
}

std::array<bool, 4> stagesAtWork(const StagesOfRun& run) {
  const bool isPacking = run.progress.stage == TransferStage::packing;
  return {!isPacking, !isPacking, !isPacking && run.conversions > 0, isPacking};
}

double doneShare(const TransferProgressSnapshot& progress) {
  if (progress.stage == TransferStage::packing) {
    return std::clamp(progress.stageFraction.value_or(0), 0.0, 1.0);
  }
  const bool hasBytes = progress.bytesTotal > 0;
  const auto done = static_cast<double>(hasBytes ? progress.bytesDone : progress.filesDone);
  const auto total = static_cast<double>(hasBytes ? progress.bytesTotal : progress.filesTotal);
  return total > 0 ? std::min(1.0, done / total) : 0;
}

bool isFinishing(const StagesOfRun& run) {
  const TransferProgressSnapshot& progress = run.progress;
  return progress.filesTotal > 0 && progress.filesDone >= progress.filesTotal && !run.isPacked;
}

}  // namespace tavrix::window
