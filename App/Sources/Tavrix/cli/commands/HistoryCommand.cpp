// The commands that show past runs.

#include <algorithm>

#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/HistorySentences.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/Failures.h"
#include "cli/sessions/Source.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "history/Verdict.h"
#include "services/HistoryFolder.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

TransferRecord::OutcomeFilter outcomeFilter(const CommandContext& context) {
  const auto& text = context.call.history.outcome;
  if (!text) return TransferRecord::OutcomeFilter::all;
  if (const auto filter = caseOf<TransferRecord::OutcomeFilter>(*text)) return *filter;
  throw CommandFailure{ExitStatus::usage,
                       say(context.language(), sentences::badOutcome, printable(*text))};
}

HistoryQuery queryOf(const CommandContext& context) {
  HistoryQuery query;
  query.phone = context.call.history.phone;
  if (const auto& folder = context.call.history.destination) {
    query.destinationPath = absolutePath(*folder);
  }
  query.outcome = outcomeFilter(context);
  return query;
}

/// Returns the id of the run that `text` names: the whole id, its beginning, or "last". Throws
/// CommandFailure if there is no such run, or more than one.
Uuid chosenRun(const CommandContext& context, HistoryStore& store, const std::string& text) {
  const Language language = context.language();
  const auto fail = [&](const Sentence<std::string_view>& sentence) -> CommandFailure {
    return {ExitStatus::usage, say(language, sentence, printable(text))};
  };
  // A whole id also names a record that is not listed, such as a damaged one.
  if (const auto id = Uuid::parse(text)) return *id;
  const std::vector<RecordSummary> runs = store.runs();
  if (runs.empty()) throw CommandFailure{ExitStatus::usage, say(language, sentences::noRuns)};
  if (text == "last") return runs.front().id;
  const std::string start = lowerCased(text);
  if (start.empty() || start.find_first_not_of("0123456789abcdef-") != std::string::npos) {
    throw fail(sentences::badRecordID);
  }
  const auto isMeant = [&](const RecordSummary& run) { return run.id.text().starts_with(start); };
  const auto found = std::find_if(runs.begin(), runs.end(), isMeant);
  if (found == runs.end()) throw fail(sentences::noSuchRecord);
  if (std::find_if(std::next(found), runs.end(), isMeant) != runs.end()) {
    throw fail(sentences::ambiguousRecordID);
  }
  return found->id;
}

std::string damageText(Language language, const TransferRecord::RecordError& error) {
  if (error.kind() == TransferRecord::RecordError::Kind::notJson) {
    return say(language, sentences::damageAtPosition, error.position().line,
               error.position().column);
  }
  return say(language, sentences::damageAtField, printable(error.field()));
}

TransferRecord readRecord(const CommandContext& context, const HistoryStore& store,
                          const Uuid& id) {
  const Language language = context.language();
  try {
    if (auto record = store.record(id)) return *std::move(record);
  } catch (const TransferRecord::RecordError& error) {
    const bool isNewer = error.kind() == TransferRecord::RecordError::Kind::newerSchema;
    throw CommandFailure{ExitStatus::stopped,
                         isNewer ? say(language, sentences::recordNewer, id.text(), error.version())
                                 : say(language, sentences::recordUnreadable, id.text(),
                                       damageText(language, error))};
  }
  throw CommandFailure{ExitStatus::usage, say(language, sentences::noSuchRecord, id.text())};
}

ExitStatus listRuns(const CommandContext& context, HistoryStore& store) {
  const HistoryOptions& options = context.call.history;
  const HistoryQuery query = queryOf(context);
  if (options.path) {
    context.printer.fileRuns(store.runsTouching(absolutePath(*options.path), query));
  } else if (options.asset) {
    context.printer.fileRuns(store.runsOfAsset(*options.asset, query));
  } else {
    context.printer.runs(store.runs(query), query == HistoryQuery{});
  }
  return ExitStatus::done;
}

ExitStatus deleteRun(const CommandContext& context, HistoryStore& store, const Uuid& id) {
  if (!store.remove(id)) {
    throw CommandFailure{ExitStatus::usage,
                         say(context.language(), sentences::noSuchRecord, id.text())};
  }
  context.printer.recordDeleted(id);
  return ExitStatus::done;
}

void checkOptions(const CommandContext& context) {
  const HistoryOptions& options = context.call.history;
  const bool hasRecord = !context.call.operands.empty();
  const auto fail = [&](const Sentence<>& sentence) {
    throw CommandFailure{ExitStatus::usage, say(context.language(), sentence)};
  };
  if (options.deletes && !hasRecord) fail(sentences::deleteWithoutRecord);
  if (options.path && options.asset) fail(sentences::pathAndAsset);
  const bool choosesRuns = options.phone || options.destination || options.path || options.asset;
  if (hasRecord && choosesRuns) fail(sentences::listOptionsWithRecord);
}

}  // namespace

ExitStatus showHistory(const CommandContext& context) {
  checkOptions(context);
  const auto filter = outcomeFilter(context);
  auto history = HistoryFolder::open(requiredStateFolder(context), context.log);
  if (!history) {
    if (!context.call.operands.empty()) {
      throw CommandFailure{ExitStatus::usage, say(context.language(), sentences::noRuns)};
    }
    context.printer.runs({}, true);
    return ExitStatus::done;
  }
  if (context.call.operands.empty()) return listRuns(context, history->store());
  const Uuid id = chosenRun(context, history->store(), context.call.operands.front());
  if (context.call.history.deletes) return deleteRun(context, history->store(), id);
  context.printer.record(filtered(readRecord(context, history->store(), id), filter));
  return ExitStatus::done;
}

}  // namespace tavrix::cli
