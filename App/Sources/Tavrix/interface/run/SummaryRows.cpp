#include "interface/run/SummaryRows.h"

#include "foundation/Sentences.h"
#include "interface/words/SummaryPageSentences.h"

namespace tavrix::window {
namespace {

using Kind = SummaryRow::Kind;

void add(std::vector<SummaryRow>& rows, Language language, const Sentence<>& title,
         const std::vector<SummaryFacts::Reason>& reasons) {
  if (reasons.empty()) return;
  rows.push_back({Kind::title, say(language, title)});
  for (const SummaryFacts::Reason& reason : reasons) {
    rows.push_back({Kind::reason, reason.text,
                    counted(language, reason.files.size(), tavrix::sentences::files)});
    for (const SummaryFacts::File& file : reason.files) {
      rows.push_back({Kind::file, file.name, file.folder, file.detail});
    }
  }
}

}  // namespace

std::vector<SummaryRow> summaryRows(Language language, const SummaryFacts& facts) {
  std::vector<SummaryRow> rows;
  add(rows, language, sentences::failedTitle, facts.failures);
  if (!facts.notes.empty()) rows.push_back({Kind::title, say(language, sentences::notesTitle)});
  for (const std::string& note : facts.notes) rows.push_back({Kind::note, note});
  if (!facts.numbers.empty()) rows.push_back({Kind::title, say(language, sentences::numbersTitle)});
  for (const SummaryFacts::Number& number : facts.numbers) {
    rows.push_back(
        {Kind::number, number.label, numberText(language, number.count), {}, number.depth});
  }
  add(rows, language, sentences::keptTitle, facts.keptOriginals);
  return rows;
}

}  // namespace tavrix::window
