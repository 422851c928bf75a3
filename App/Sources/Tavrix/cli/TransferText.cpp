// What TextPrinter tells of plans and runs.

#include "cli/CliSentences.h"
#include "cli/TextPrinter.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"

namespace tavrix::cli {

void TextPrinter::folders(const PlanResult& result) {
  const std::vector<FolderPlan> plans = folderPlans(result.library.rows, result.plan);
  table({{say(language_, sentences::titleFolder), false, true},
         {say(language_, sentences::titleNew), true},
         {say(language_, sentences::titleSize), true},
         {say(language_, sentences::titleKnown), true}})
      .write(sink_, plans.size(), [&](std::size_t row) -> Table::Cells {
        const FolderPlan& folder = plans[row];
        return {result.isFlat ? say(language_, sentences::flatFolder) : folder.name,
                number(folder.newFiles), bytes(folder.newBytes), number(folder.knownFiles)};
      });
  line("");
}

void TextPrinter::tally(const TransferTally& tally, bool hasRun) {
  struct Row {
    int depth;
    std::string label;
    std::uint64_t count;
    bool isShownWhenZero = false;
  };
  const auto text = [&](const Sentence<>& sentence) { return say(language_, sentence); };
  std::vector<Row> rows{
      {0, text(sentences::rowCatalogue), tally.catalogue, true},
      {1, text(sentences::rowWithoutPicture), tally.leftOut.withoutPicture},
      {1, text(sentences::rowBySettings), tally.leftOut.bySettings},
      {1, text(sentences::rowKnown), tally.known},
      {1, text(sentences::rowPlanned), tally.planned, true},
  };
  if (hasRun) {
    rows.insert(rows.end(), {{2, text(sentences::rowCopied), tally.copied, true},
                             {2, text(sentences::rowAlreadyThere), tally.alreadyThere},
                             {2, text(sentences::rowKeptOriginal), tally.keptOriginal},
                             {2, text(sentences::rowFailed), tally.failed},
                             {2, text(sentences::rowNotReached), tally.notReached}});
  }
  std::erase_if(rows, [](const Row& row) { return row.count == 0 && !row.isShownWhenZero; });
  int widest = 0;
  for (const Row& row : rows) widest = std::max(widest, 2 * row.depth + displayWidth(row.label));
  for (const Row& row : rows) {
    const std::string indent(static_cast<std::size_t>(2 * row.depth), ' ');
    line(padded(indent + row.label, widest, false) + "  " +
         padded(number(row.count), displayWidth(number(tally.catalogue)), true));
  }
}

void TextPrinter::nothing(const Library& library, const std::string& destination) {
  if (library.fileCount == 0) {
    line(say(language_, sentences::nothingInCatalogue));
  } else if (library.rows.empty()) {
    line(say(language_, sentences::nothingChosen));
  } else {
    line(say(language_, sentences::nothingToDo, printable(destination)));
  }
  line("");
}

void TextPrinter::plan(const PlanResult& result) {
  const TransferTally counts = tallyOf(result.library, result.plan, {});
  if (!result.library.rows.empty()) folders(result);
  if (result.plan.files.empty()) {
    nothing(result.library, result.destination);
  } else {
    line(say(language_, sentences::planHeadline, count(counts.planned, sentences::files),
             bytes(counts.plannedBytes), printable(result.destination)));
    if (result.freeBytes && *result.freeBytes < counts.plannedBytes) {
      line(say(language_, sentences::spaceHint, bytes(counts.plannedBytes),
               bytes(*result.freeBytes)));
    }
    line("");
  }
  tally(counts, false);
  home(result.library);
}

void TextPrinter::headline(const TransferResult& result) {
  const TransferOutcome& outcome = result.outcome;
  switch (outcome.status) {
    case TransferStatus::completed:
      return line(say(language_, sentences::runCompleted, bytes(outcome.report.bytesWritten)));
    case TransferStatus::completedWithFailures:
      return line(say(language_, sentences::runCompletedWithFailures,
                      count(outcome.report.failures.size(), sentences::files)));
    case TransferStatus::cancelled:
    case TransferStatus::interrupted:
      // The error itself says why the run ended.
      return;
  }
}

void TextPrinter::list(const std::string& title, const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  line("");
  line(title);
  for (const std::string& each : lines) line("  " + printable(each));
}

void TextPrinter::transfer(const TransferResult& result) {
  const TransferReport& report = result.outcome.report;
  if (result.plan.files.empty()) {
    nothing(result.library, result.destination);
    tally(tallyOf(result.library, result.plan, report), false);
    return home(result.library);
  }
  headline(result);
  line("");
  tally(tallyOf(result.library, result.plan, report), true);
  home(result.library);
  list(say(language_, sentences::keptOriginalsTitle), report.conversionFallbacks);
  list(say(language_, sentences::failuresTitle), report.failures);
}

}  // namespace tavrix::cli
