#pragma once

#include <array>
#include <string>

#include "foundation/Sentence.h"
#include "transfer/TransferReport.h"

namespace tavrix::window {

/// A run as the texts of its stages need it.
struct StagesOfRun {
  TransferProgressSnapshot progress;
  std::uint64_t conversions = 0;  ///< files to convert
  bool isPacked = false;
};

/// Returns the files and the bytes that are done: "12 / 40 файлов", "1,2 ГБ из 40 ГБ".
std::string filesDoneText(Language language, const TransferProgressSnapshot& progress);
std::string bytesDoneText(Language language, const TransferProgressSnapshot& progress);

/// Returns the titles of the stages, in the order of TransferStage.
std::array<std::string, 4> stageTitles(Language language);
/// Returns how far each stage is, in the order of TransferStage: "12 / 40 файлов", "в очереди",
/// "выключена".
std::array<std::string, 4> stageTexts(Language language, const StagesOfRun& run);

/// Returns which stages are at work. The first three take turns file by file, so they count as one.
std::array<bool, 4> stagesAtWork(const StagesOfRun& run);

/// Returns the share of the run that is done, 0 to 1. While files are packed, that of the packing.
double doneShare(const TransferProgressSnapshot& progress);

/// Returns true if every file has its outcome and the run still works on what follows.
bool isFinishing(const StagesOfRun& run);

}  // namespace tavrix::window
