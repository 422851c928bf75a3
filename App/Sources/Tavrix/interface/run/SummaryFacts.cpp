#include "interface/run/SummaryFacts.h"

#include <map>
#include <set>

#include "foundation/Sentences.h"
#include "foundation/StringMap.h"
#include "foundation/Text.h"
#include "history/Verdict.h"
#include "interface/words/ListSentences.h"
#include "interface/words/SummaryPageSentences.h"
#include "interface/words/TimeText.h"
#include "library/PlanSummary.h"
#include "runs/RunRecording.h"
#include "text/ConversionSentences.h"
#include "text/FailureReason.h"
#include "text/PlanSentences.h"

namespace tavrix::window {
namespace {

namespace shared = tavrix::sentences;
using Status = TransferRecord::Status;

/// Gathers files by reason, the reasons in the order of their first file.
class Reasons {
 public:
  Reasons(Language language, const TransferPlan& plan) : language_(language), plan_(plan) {}

  void add(const FileOutcome& outcome, const FileOutcome::Failed& failed) {
    std::string reason = reasonBesideName(language_, failed.reason);
    const std::string& code = failed.code.code;
    const bool hasSizes = code == "sizesDiffer" || code == "tooManyBytes";
    SummaryFacts::File file = fileOf(outcome);
    if (hasSizes) file.detail = std::exchange(reason, say(language_, sentences::wrongSizes));
    of(printable(reason)).files.push_back(std::move(file));
  }
  void add(const FileOutcome& outcome, const FileOutcome::KeptOriginal& kept) {
    of(shared::conversionFailureText(language_, kept.reason)).files.push_back(fileOf(outcome));
  }
  std::vector<SummaryFacts::Reason> take() { return std::move(reasons_); }

 private:
  SummaryFacts::Reason& of(const std::string& text) {
    const auto [found, isNew] = byText_.emplace(text, reasons_.size());
    if (isNew) reasons_.push_back({text, {}});
    return reasons_[found->second];
  }
  SummaryFacts::File fileOf(const FileOutcome& outcome) {
    if (folders_.empty()) {
      for (const PlannedFile& file : plan_.files) {
        const auto slash = file.relativePath.rfind('/');
        const std::size_t length = slash == std::string::npos ? 0 : slash;
        folders_.emplace(file.asset.id(), file.relativePath.substr(0, length));
      }
    }
    const auto folder = folders_.find(outcome.assetID);
    return {folder == folders_.end() ? std::string{} : printable(folder->second),
            printable(outcome.name),
            {}};
  }

  Language language_;
  const TransferPlan& plan_;
  StringMap<std::string> folders_;  ///< by asset id; filled when the first is wanted
  std::map<std::string, std::size_t> byText_;
  std::vector<SummaryFacts::Reason> reasons_;
};

/// Returns the number of shots of which a file failed.
std::uint64_t failedShots(const TransferPlan& plan, const TransferReport& report) {
  if (report.failures.empty()) return 0;
  std::set<std::string_view> failed;
  for (const FileOutcome& file : report.files) {
    if (file.is<FileOutcome::Failed>()) failed.insert(file.assetID);
  }
  std::set<std::string_view> shots;
  for (const PlannedFile& file : plan.files) {
    if (failed.contains(file.asset.id())) shots.insert(file.bundleID());
  }
  return shots.size();
}

std::vector<SummaryFacts::Number> numbersOf(Language language, const TransferTally& tally) {
  struct Row {
    int depth;
    const Sentence<>& label;
    std::uint64_t count;
    bool isMain = false;
  };
  const Row rows[] = {{0, shared::rowCatalogue, tally.catalogue, true},
                      {1, shared::rowWithoutPicture, tally.leftOut.withoutPicture},
                      {1, shared::rowUnknownKind, tally.leftOut.unknown.size()},
                      {1, shared::rowBySettings, tally.leftOut.bySettings},
                      {1, sentences::rowUnchecked, tally.leftOut.byChoice.value_or(0)},
                      {1, shared::rowKnown, tally.known},
                      {1, shared::rowPlanned, tally.planned, true},
                      {2, shared::rowCopied, tally.copied, true},
                      {2, shared::rowAlreadyThere, tally.alreadyThere},
                      {2, shared::rowKeptOriginal, tally.keptOriginal},
                      {2, shared::rowFailed, tally.failed},
                      {2, shared::rowNotReached, tally.notReached}};
  std::vector<SummaryFacts::Number> numbers;
  for (const Row& row : rows) {
    if (row.count > 0 || row.isMain) {
      numbers.push_back({row.depth, say(language, row.label), row.count});
    }
  }
  return numbers;
}

SummaryFacts::Tone toneOf(Status status) {
  if (status == Status::completed) return SummaryFacts::Tone::good;
  return status == Status::completedWithFailures ? SummaryFacts::Tone::bad
                                                 : SummaryFacts::Tone::warning;
}

std::string adviceOf(Language language, const RunOutcome& outcome, bool isPhone) {
  if (outcome.status != Status::completed) {
    return say(language,
               outcome.isPacked ? sentences::againPacksAll : sentences::againTransfersRest);
  }
  return isPhone ? say(language, sentences::mayUnplug) : std::string{};
}

}  // namespace

Headline headlineOf(Language language, const Run& run) {
  const TransferReport& report = *run.outcome.report;
  TransferRecord::Totals totals;
  totals.failed = failedShots(*run.plan, report);
  Headline headline{verdictText(language, run.outcome.status, totals),
                    say(language, sentences::nothingWritten)};
  if (report.bytesWritten == 0) return headline;
  const auto taken = std::chrono::round<std::chrono::seconds>(run.finishedAt - run.startedAt);
  headline.written = say(language, sentences::writtenIn, bytesText(language, report.bytesWritten),
                         timeTakenText(language, taken));
  return headline;
}

SummaryFacts summaryOf(Language language, const Run& run, bool isPhone) {
  const RunOutcome& outcome = run.outcome;
  const TransferReport& report = *outcome.report;
  SummaryFacts facts;
  facts.tone = toneOf(outcome.status);
  facts.canRetry = outcome.status != Status::completed;
  facts.headline = headlineOf(language, run);
  facts.advice = adviceOf(language, outcome, isPhone);
  facts.numbers = numbersOf(language, tallyOf(*run.library, *run.plan, report));
  Reasons failures{language, *run.plan};
  Reasons kept{language, *run.plan};
  for (const FileOutcome& file : report.files) {
    if (const auto* failed = std::get_if<FileOutcome::Failed>(&file.kind))
      failures.add(file, *failed);
    if (const auto* own = std::get_if<FileOutcome::KeptOriginal>(&file.kind)) kept.add(file, *own);
  }
  facts.failures = failures.take();
  facts.keptOriginals = kept.take();
  facts.notes = runNotes(language, *run.library, outcome);
  for (std::string& note : fileNotes(language, *run.plan, *outcome.report)) {
    facts.notes.push_back(std::move(note));
  }
  if (run.optimizedSkipped > 0) {
    facts.notes.push_back(say(language, sentences::optimizedLeftOut,
                              counted(language, run.optimizedSkipped, sentences::shots)));
  }
  for (std::string& note : facts.notes) note = printable(note);
  return facts;
}

}  // namespace tavrix::window
