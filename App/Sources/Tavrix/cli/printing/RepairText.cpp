// TextPrinter: repairs of a destination.

#include "cli/printing/KeptReasonText.h"
#include "cli/printing/TextPrinter.h"
#include "foundation/files/AtomicFile.h"
#include "text/FailureReason.h"

namespace tavrix::cli {

void TextPrinter::repaired(const RepairOutcome& outcome) {
  const std::uint64_t repaired = outcome.repaired.size();
  const std::uint64_t others = outcome.failed.size() + outcome.kept.size();
  const std::string written = bytes(outcome.bytesWritten());
  if (repaired + others == 0) {
    if (!outcome.isCancelled) line(say(language_, sentences::repairNothing));
  } else if (others == 0) {
    line(say(language_, sentences::repairComplete, count(repaired, sentences::files), written));
  } else {
    line(say(language_, sentences::repairPartial, number(repaired),
             count(repaired + others, sentences::outOfFiles), written));
  }
  std::vector<std::string> done;
  for (const RepairedFile& file : outcome.repaired) {
    done.push_back(file.damagedPath ? say(language_, sentences::repairedBeside, file.path,
                                          lastPathComponent(*file.damagedPath))
                                    : file.path);
  }
  std::vector<std::string> failed;
  for (const UnrepairedFile& file : outcome.failed) {
    failed.push_back(say(language_, sentences::fileAndReason, file.path,
                         reasonBesideName(language_, file.failure.reason)));
  }
  std::vector<std::string> kept;
  for (const CopyRepair::KeptFile& file : outcome.kept) {
    kept.push_back(
        say(language_, sentences::fileAndReason, file.path, keptReasonText(language_, file)));
  }
  shortList(say(language_, sentences::repairedTitle), done);
  list(say(language_, sentences::unrepairedTitle), failed);
  list(say(language_, sentences::keptTitle), kept);
}

}  // namespace tavrix::cli
