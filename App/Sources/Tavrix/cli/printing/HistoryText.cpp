// TextPrinter: past runs.

#include <limits>

#include "cli/call/Wrapping.h"
#include "cli/printing/TextPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/HistorySentences.h"
#include "cli/sentences/VerifySentences.h"
#include "foundation/Text.h"
#include "foundation/files/AtomicFile.h"
#include "history/Verdict.h"
#include "text/FailureReason.h"

namespace tavrix::cli {
namespace {

using Record = TransferRecord;

std::uint64_t filesIn(const Record::Folder& folder) {
  std::uint64_t count = 0;
  for (const Record::Shot& shot : folder.shots) count += shot.files.size();
  return count;
}

/// Iterates over the files of a folder. A table reads them twice, in order.
class FileCursor {
 public:
  explicit FileCursor(const Record::Folder& folder) : folder_(folder) {}

  const Record::File& at(std::size_t row) {
    if (row == 0) shot_ = file_ = 0;
    while (file_ == folder_.shots[shot_].files.size()) {
      ++shot_;
      file_ = 0;
    }
    return folder_.shots[shot_].files[file_++];
  }

 private:
  const Record::Folder& folder_;
  std::size_t shot_ = 0;
  std::size_t file_ = 0;
};

}  // namespace

void TextPrinter::runs(const std::vector<RecordSummary>& runs, bool isWhole) {
  if (runs.empty()) {
    return line(say(language_, isWhole ? sentences::noRuns : sentences::noSuchRuns));
  }
  const auto title = [&](const Sentence<>& sentence) { return say(language_, sentence); };
  table({{title(sentences::titleRecord)},
         {title(sentences::titleBegun)},
         {title(sentences::titlePhone), false, true},
         {title(sentences::titleShots), true},
         {title(sentences::titleWritten), true},
         {.title = title(sentences::titleVerdict), .wraps = true},
         {title(sentences::titleDestination), false, true}})
      .write(sink_, runs.size(), [&](std::size_t row) -> Table::Cells {
        const RecordSummary& run = runs[row];
        return {shortID(run.id),
                minuteText(run.startedAt),
                printable(run.phoneName),
                number(run.totals.shots),
                bytes(run.totals.bytesWritten),
                verdictText(language_, run.status, run.totals),
                printable(run.destinationPath)};
      });
  line("");
  line(count(runs.size(), sentences::runs));
}

void TextPrinter::fileRuns(const std::vector<HistoryStore::FileRun>& runs) {
  if (runs.empty()) return line(say(language_, sentences::noSuchRuns));
  const auto title = [&](const Sentence<>& sentence) { return say(language_, sentence); };
  table({{title(sentences::titleRecord)},
         {title(sentences::titleBegun)},
         {title(sentences::titlePhone), false, true},
         {title(sentences::titleFile), false, true},
         {.title = title(sentences::titleOutcomeState), .wraps = true},
         {title(sentences::titlePathOrReason), false, true}})
      .write(sink_, runs.size(), [&](std::size_t row) -> Table::Cells {
        const auto& [run, file] = runs[row];
        return {shortID(run.id),
                minuteText(run.startedAt),
                printable(run.phoneName),
                printable(file.name),
                stateOf(file),
                pathOrReason(file)};
      });
  line("");
  line(count(runs.size(), sentences::runs));
}

std::string TextPrinter::stateOf(const Record::File& file) const {
  const std::string state = stateText(language_, file.state);
  return file.keptOriginal ? say(language_, sentences::keptOriginalState, state) : state;
}

std::string TextPrinter::pathOrReason(const Record::File& file) const {
  if (!file.reason) return printable(file.path.value_or(""));
  if (file.path) {
    return printable(say(language_, sentences::fileAndReason, *file.path, *file.reason));
  }
  return printable(reasonBesideName(language_, *file.reason));
}

void TextPrinter::runFields(const Record& record) {
  std::vector<std::pair<std::string, std::string>> rows;
  const auto add = [&](const Sentence<>& label, std::string text) {
    rows.emplace_back(say(language_, label), std::move(text));
  };
  add(sentences::rowRecord, record.id.text());
  add(sentences::rowTime,
      say(language_, sentences::timeSpan, dateText(record.startedAt), dateText(record.finishedAt)));
  add(sentences::rowPhone, printable(record.phoneName));
  add(sentences::rowDestination, printable(record.destinationPath));
  add(sentences::rowTemplate, templateTitle(record.options.templateName));
  add(sentences::rowWritten, bytes(record.totals.bytesWritten));
  add(sentences::rowVerdict, verdictText(language_, record.status, record.totals));
  for (const std::string& note : record.notes) add(sentences::rowNote, printable(note));
  labelled(rows, "", columns_);
}

void TextPrinter::labelled(const std::vector<std::pair<std::string, std::string>>& rows,
                           const std::string& indent, std::optional<int> columns) {
  int widest = 0;
  for (const auto& [label, text] : rows) widest = std::max(widest, displayWidth(label));
  const int start = displayWidth(indent) + widest + 2;
  for (const auto& [label, text] : rows) {
    std::string begin = indent + padded(label, widest, false) + "  ";
    const int width = columns ? *columns - start : std::numeric_limits<int>::max();
    for (const std::string& part : wrapped(text, width)) {
      line(begin + part);
      begin.assign(static_cast<std::size_t>(start), ' ');
    }
  }
}

void TextPrinter::runTotals(const Record::Totals& totals) {
  line(shotsText(language_, totals.shots));
  const std::pair<Record::Outcome, std::uint64_t> parts[] = {
      {Record::Outcome::onMac, totals.onMac},
      {Record::Outcome::alreadyThere, totals.alreadyThere},
      {Record::Outcome::failed, totals.failed},
      {Record::Outcome::optimized, totals.optimized},
      {Record::Outcome::notReached, totals.notReached()},
  };
  std::vector<std::pair<std::string, std::string>> rows;
  const int width = displayWidth(number(totals.shots));
  for (const auto& [outcome, count] : parts) {
    if (count == 0) continue;
    rows.emplace_back("  " + outcomeText(language_, outcome), padded(number(count), width, true));
  }
  labelled(rows, "", columns_);
}

void TextPrinter::recordedFolder(const Record::Folder& folder) {
  const std::string name =
      folder.name.empty() ? say(language_, sentences::flatFolder) : printable(folder.name);
  line(say(language_, sentences::folderHeading, name, shotsText(language_, folder.shots.size())));
  FileCursor files{folder};
  table({{say(language_, sentences::titleFile), false, true},
         {say(language_, sentences::titleSize), true},
         {.title = say(language_, sentences::titleOutcomeState), .wraps = true},
         {say(language_, sentences::titlePathOrReason), false, true}})
      .write(sink_, filesIn(folder), [&](std::size_t row) -> Table::Cells {
        const Record::File& file = files.at(row);
        return {printable(file.name), bytes(file.bytes), stateOf(file), pathOrReason(file)};
      });
}

void TextPrinter::record(const Record& record) {
  runFields(record);
  line("");
  runTotals(record.totals);
  if (record.folders.empty() && record.totals.shots > 0) {
    line("");
    line(say(language_, sentences::noSuchShots));
  }
  for (const Record::Folder& folder : record.folders) {
    line("");
    recordedFolder(folder);
  }
}

void TextPrinter::recordDeleted(const Uuid& id) {
  line(say(language_, sentences::recordDeleted, id.text()));
}

std::string TextPrinter::templateTitle(const std::string& name) const {
  for (const NamePresets::Builtin& preset : NamePresets::builtins()) {
    if (preset.russian == name && language_ == Language::english) {
      return std::string{preset.english};
    }
  }
  return printable(name);
}

}  // namespace tavrix::cli
