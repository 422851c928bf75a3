#include "interface/list/CardText.h"

#include <fmt/format.h>

#include "foundation/Sentences.h"
#include "interface/words/DayText.h"
#include "interface/words/ListSentences.h"
#include "model/GroupFacts.h"
#include "text/MergedNote.h"

namespace tavrix::window::CardText {
namespace {

std::string localeOf(Language language) {
  return language == Language::russian ? "ru_RU" : "en_GB";
}

std::string day(Language language, CivilDate date, bool hasMonth, bool hasYear) {
  // A pattern with day and month gives the genitive in Russian: "18 мая".
  std::string pattern = "d";
  if (hasMonth) pattern += " MMMM";
  if (hasYear) pattern += " y";
  return formattedDay(language, date, pattern);
}

void append(std::string& text, std::string_view separator, std::string_view part) {
  if (part.empty()) return;
  if (!text.empty()) text += separator;
  text += part;
}

}  // namespace

std::string sectionTitle(Language language, const FolderRows::Section& section) {
  if (!section.year) return say(language, sentences::noDate);
  if (!section.month) return std::to_string(*section.year);
  return monthTitle({.year = *section.year, .month = *section.month}, localeOf(language));
}

std::string period(Language language, const DisplayGroup& folder, const TimeZone& zone) {
  const auto span = daysOf(*folder.group, zone);
  if (!span) return say(language, sentences::noDate);
  const auto [first, last] = *span;
  if (first == last) return day(language, first, true, true);
  const bool isOneYear = first.year() == last.year();
  const bool isOneMonth = isOneYear && first.month() == last.month();
  const std::string_view dash = isOneMonth ? "–" : " – ";
  return fmt::format("{}{}{}", day(language, first, !isOneMonth, !isOneYear), dash,
                     day(language, last, true, true));
}

std::string counts(Language language, const DisplayGroup& folder) {
  std::string text;
  const auto add = [&](std::uint64_t count, const CountedNoun& noun) {
    if (count > 0) append(text, ", ", counted(language, count, noun));
  };
  add(folder.counts.photos, sentences::photos);
  add(folder.counts.videos, sentences::videos);
  if (text.empty()) {
    add(folder.counts.sidecars + folder.counts.others, tavrix::sentences::files);
  }
  return text;
}

bool isInPlace(const DisplayGroup& folder) { return folder.newCount == 0 && folder.knownCount > 0; }

std::string effect(Language language, const DisplayGroup& folder, bool hasDestination) {
  if (isInPlace(folder)) return say(language, sentences::inPlace);
  if (folder.newCount == 0) return say(language, sentences::nothingToCopy);
  const CountedNoun& noun = hasDestination ? sentences::newFiles : tavrix::sentences::files;
  return fmt::format("{}, {}", counted(language, folder.newCount, noun),
                     bytesText(language, folder.newBytes));
}

std::string note(Language language, const DisplayGroup& folder) {
  constexpr std::string_view separator = " · ";
  std::string text = mergedNote(language, *folder.group);
  if (folder.isFileDated) append(text, separator, say(language, sentences::fileDated));
  if (folder.templateName) append(text, separator, say(language, sentences::continued));
  if (folder.optimizedCount > 0) {
    append(text, separator,
           say(language, sentences::reducedCopies, numberText(language, folder.optimizedCount)));
  }
  return text;
}

std::string description(Language language, const DisplayGroup& folder, const AppState& state,
                        std::size_t number, std::size_t count) {
  std::string text = period(language, folder, state.settings->gathering.timeZone);
  append(text, ", ", counts(language, folder));
  append(text, ", ", effect(language, folder, state.destination.has_value()));
  append(text, ", ", note(language, folder));
  append(text, ", ",
         say(language, sentences::folderOf, numberText(language, number),
             numberText(language, count)));
  return text;
}

}  // namespace tavrix::window::CardText
