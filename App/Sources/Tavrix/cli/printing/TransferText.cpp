// TextPrinter: plans and runs.

#include "cli/printing/TextPrinter.h"
#include "cli/sentences/ChoiceSentences.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/HistorySentences.h"
#include "cli/sentences/VerifySentences.h"
#include "foundation/Sentences.h"
#include "foundation/StringMap.h"
#include "foundation/Text.h"
#include "runs/RunRecording.h"
#include "text/ConversionSentences.h"
#include "text/FailureReason.h"
#include "text/SourceSentences.h"

namespace tavrix::cli {

void TextPrinter::folders(const PlanResult& result) {
  const std::vector<FolderPlan> plans = folderPlans(result.library.rows, result.plan);
  const bool anyDiffer = std::any_of(plans.begin(), plans.end(), [](const FolderPlan& folder) {
    return folder.differingFiles > 0;
  });
  std::vector<Table::Column> columns{{say(language_, sentences::titleFolder), false, true},
                                     {say(language_, sentences::titleNew), true},
                                     {say(language_, sentences::titleSize), true},
                                     {say(language_, sentences::titleKnown), true}};
  if (anyDiffer) columns.push_back({say(language_, sentences::titleDiffering), true});
  table(std::move(columns)).write(sink_, plans.size(), [&](std::size_t row) -> Table::Cells {
    const FolderPlan& folder = plans[row];
    Table::Cells cells{result.isFlat ? say(language_, sentences::flatFolder) : folder.name,
                       number(folder.newFiles), bytes(folder.newBytes), number(folder.knownFiles)};
    if (anyDiffer) cells.push_back(number(folder.differingFiles));
    return cells;
  });
  line("");
  continued(result.library, result.plan);
}

void TextPrinter::continued(const Library& library, const TransferPlan& plan) {
  constexpr std::size_t longestList = 10;
  const std::vector<FolderPlan> plans = rowPlans(library.rows, plan);
  std::size_t count = 0;
  for (std::size_t i = 0; i < plans.size(); ++i) {
    const FolderNaming::Row& row = library.rows[i];
    if (!row.templateName || plans[i].newFiles == 0 || ++count > longestList) continue;
    line(say(language_, sentences::continuesFolder, printable(row.name),
             printable(*row.templateName)));
  }
  if (count > longestList) {
    line(say(language_, sentences::moreContinueFolders, number(count - longestList)));
  }
  if (count > 0) line("");
}

void TextPrinter::tally(const TransferTally& tally, bool hasRun) {
  const auto text = [&](const Sentence<>& sentence) { return say(language_, sentence); };
  std::vector<TallyRow> rows{
      {0, text(sentences::rowCatalogue), tally.catalogue, true},
      {1, text(sentences::rowWithoutPicture), tally.leftOut.withoutPicture},
      {1, text(sentences::rowUnknownKind), tally.leftOut.unknown.size()},
      {1, text(sentences::rowBySettings), tally.leftOut.bySettings},
      {1, text(sentences::rowByChoice), tally.leftOut.byChoice.value_or(0)},
      {1, text(sentences::rowKnown), tally.known},
      {2, text(sentences::rowDiffering), tally.differing},
      {1, text(sentences::rowPlanned), tally.planned, true},
  };
  if (hasRun) {
    rows.insert(rows.end(), {{2, text(sentences::rowCopied), tally.copied, true},
                             {2, text(sentences::rowAlreadyThere), tally.alreadyThere},
                             {2, text(sentences::rowKeptOriginal), tally.keptOriginal},
                             {2, text(sentences::rowFailed), tally.failed},
                             {2, text(sentences::rowNotReached), tally.notReached}});
  }
  tallyRows(std::move(rows));
}

void TextPrinter::tallyRows(std::vector<TallyRow> rows) {
  std::erase_if(rows, [](const TallyRow& row) { return row.count == 0 && !row.isShownWhenZero; });
  int widest = 0;
  int widestNumber = 0;
  for (const TallyRow& row : rows) {
    widest = std::max(widest, 2 * row.depth + displayWidth(row.label));
    widestNumber = std::max(widestNumber, displayWidth(number(row.count)));
  }
  for (const TallyRow& row : rows) {
    const std::string indent(static_cast<std::size_t>(2 * row.depth), ' ');
    line(padded(indent + row.label, widest, false) + "  " +
         padded(number(row.count), widestNumber, true));
  }
}

namespace {

/// Returns the folders of the planned files, relative to the destination and with a slash at the
/// end, by asset id.
StringMap<std::string> plannedFolders(const TransferPlan& plan) {
  StringMap<std::string> folders;
  for (const PlannedFile& file : plan.files) {
    const auto slash = file.relativePath.rfind('/');
    if (slash == std::string::npos) continue;
    folders.emplace(file.asset.id(), file.relativePath.substr(0, slash + 1));
  }
  return folders;
}

/// Returns the failed files, each with its folder and its reason.
std::vector<std::string> failureLines(Language language, const TransferReport& report,
                                      const TransferPlan& plan) {
  std::vector<std::string> lines;
  if (report.failures.empty()) return lines;
  const StringMap<std::string> folders = plannedFolders(plan);
  for (const FileOutcome& outcome : report.files) {
    const auto* const failed = std::get_if<FileOutcome::Failed>(&outcome.kind);
    if (failed == nullptr) continue;
    const auto folder = folders.find(outcome.assetID);
    lines.push_back((folder == folders.end() ? "" : folder->second) + outcome.name + ": " +
                    reasonBesideName(language, failed->reason));
  }
  return lines;
}

/// Returns the files that were kept unconverted, each with its reason.
std::vector<std::string> keptOriginals(Language language, const TransferReport& report) {
  std::vector<std::string> lines;
  for (const FileOutcome& outcome : report.files) {
    const auto* const kept = std::get_if<FileOutcome::KeptOriginal>(&outcome.kind);
    if (kept == nullptr) continue;
    lines.push_back(say(language, sentences::fileAndReason, outcome.name,
                        tavrix::sentences::conversionFailureText(language, kept->reason)));
  }
  return lines;
}

}  // namespace

void TextPrinter::nothing(const Library& library, const TransferPlan& plan,
                          const std::string& destination) {
  if (library.fileCount == 0) {
    line(say(language_, sentences::nothingInCatalogue));
  } else if (library.rows.empty()) {
    const bool isByChoice = library.leftOut.byChoice.value_or(0) > 0;
    line(say(language_, isByChoice ? sentences::nothingMatchesChoice : sentences::nothingChosen));
  } else {
    const bool isSame = !countsOf(plan.differing).leavesAny();
    line(say(language_, isSame ? sentences::nothingToDo : sentences::nothingNew,
             printable(destination)));
  }
  line("");
}

void TextPrinter::plannedFiles(const TransferPlan& plan) {
  if (plan.files.empty()) return;
  const auto conversionText = [&](const PlannedFile& file) -> std::string {
    if (!isConverted(file.conversion)) return {};
    const bool isStill = std::holds_alternative<planned_conversion::Jpeg>(file.conversion);
    return say(language_, isStill ? sentences::toJPEG : sentences::toH264);
  };
  table({{say(language_, sentences::titleFile), false, true},
         {say(language_, sentences::titleSize), true},
         {say(language_, sentences::titleNotes)}})
      .write(sink_, plan.files.size(), [&](std::size_t row) -> Table::Cells {
        const PlannedFile& file = plan.files[row];
        return {file.relativePath, bytes(file.asset.sizeBytes()), conversionText(file)};
      });
  line("");
}

void TextPrinter::archives(const PlanResult& result) {
  if (result.archives.empty()) return;
  std::vector<std::string> lines;
  for (const PlannedArchive& archive : result.archives) {
    std::uint64_t total = 0;
    for (const std::size_t i : archive.files) total += result.plan.files[i].asset.sizeBytes();
    lines.push_back(say(language_, sentences::archiveRow, archive.name,
                        count(archive.files.size(), sentences::files), bytes(total)));
  }
  line(say(language_, sentences::archivesTitle));
  for (const std::string& each : lines) line("  " + printable(each));
  line("");
}

void TextPrinter::plan(const PlanResult& result) {
  const TransferTally counts = tallyOf(result.library, result.plan, {});
  if (!result.library.rows.empty()) folders(result);
  if (result.listsFiles) plannedFiles(result.plan);
  if (result.plan.files.empty()) {
    nothing(result.library, result.plan, result.destination);
  } else {
    line(say(language_, sentences::planHeadline, count(counts.planned, sentences::files),
             bytes(counts.plannedBytes), printable(result.destination)));
    if (result.freeBytes && *result.freeBytes < result.neededBytes) {
      line(say(language_, sentences::spaceHint, bytes(result.neededBytes),
               bytes(*result.freeBytes)));
    }
    line("");
    archives(result);
  }
  tally(counts, false);
  home(result.library);
}

void TextPrinter::headline(const TransferResult& result) {
  const RunOutcome& outcome = result.outcome;
  switch (outcome.status) {
    case TransferRecord::Status::completed:
      return line(say(language_, sentences::runCompleted, bytes(outcome.report->bytesWritten)));
    case TransferRecord::Status::completedWithFailures:
      // No file failed: the source was only partly readable, which the closing lines report.
      if (outcome.report->failures.empty()) break;
      return line(say(language_,
                      outcome.isPacked ? sentences::packingCompletedWithFailures
                                       : sentences::runCompletedWithFailures,
                      count(outcome.report->failures.size(), sentences::files)));
    case TransferRecord::Status::cancelled:
    case TransferRecord::Status::interrupted:
      // The error message states why the run ended.
      return;
  }
  line(say(language_, sentences::runPartlyCompleted, bytes(outcome.report->bytesWritten)));
}

void TextPrinter::unreadFolders(const RunOutcome& outcome) {
  if (outcome.unreadFolders == 0) return;
  line("");
  line(say(language_, sentences::runWithUnreadFolders,
           count(outcome.unreadFolders, sentences::folders)));
}

void TextPrinter::list(const std::string& title, const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  line("");
  line(title);
  for (const std::string& each : lines) line("  " + printable(each));
}

void TextPrinter::failures(const TransferResult& result) {
  constexpr std::size_t shown = 20;
  auto lines = failureLines(language_, *result.outcome.report, result.plan);
  const std::size_t all = lines.size();
  const bool isCapped = columns_ && all > shown;
  if (isCapped) lines.resize(shown);
  list(say(language_, sentences::failuresTitle), lines);
  if (isCapped) line("  " + say(language_, sentences::moreFailures, number(all - shown)));
}

void TextPrinter::transfer(const TransferResult& result) {
  const TransferReport& report = *result.outcome.report;
  if (result.plan.files.empty()) {
    nothing(result.library, result.plan, result.destination);
    tally(tallyOf(result.library, result.plan, report), false);
    home(result.library);
    for (const std::string& note : packingNotes(language_, result.outcome)) line(printable(note));
    return unreadFolders(result.outcome);
  }
  headline(result);
  line("");
  continued(result.library, result.plan);
  tally(tallyOf(result.library, result.plan, report), true);
  home(result.library);
  list(say(language_, sentences::keptOriginalsTitle), keptOriginals(language_, report));
  failures(result);
  unreadFolders(result.outcome);
  if (const auto note = unknownKindNote(language_, result.library)) {
    line("");
    line(*note);
  }
  for (const std::string& note : fileNotes(language_, result.plan, report)) {
    line("");
    line(note);
  }
  for (const std::string& note : packingNotes(language_, result.outcome)) {
    line("");
    line(printable(note));
  }
  if (result.recordID) {
    line("");
    line(say(language_, sentences::recordHint, shortID(*result.recordID)));
  }
}

}  // namespace tavrix::cli
