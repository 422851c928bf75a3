// TextPrinter: the folders, home and merged folders.

#include "cli/printing/GroupText.h"

#include <algorithm>

#include "cli/printing/TextPrinter.h"
#include "cli/sentences/ChoiceSentences.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/GroupSentences.h"
#include "foundation/Text.h"
#include "text/HomeText.h"
#include "text/Measures.h"
#include "text/MergedNote.h"
#include "text/ReasonSentences.h"
#include "text/SuggestionText.h"

namespace tavrix::cli {
namespace {

std::string candidateText(Language language, const Library& library,
                          const HomeCandidate& candidate) {
  const auto number = [&](std::int64_t count) {
    return numberText(language, static_cast<std::uint64_t>(count));
  };
  return say(language, sentences::homeCandidate,
             placeName(language, library.landmarks.get(), candidate.center)
                 .value_or(pointText(candidate.center)),
             number(candidate.totalDays), number(candidate.recentDays));
}

std::string daysText(CivilDate first, CivilDate last) {
  if (first == last) return dayText(first);
  const std::string begin = dayText(first);
  const std::string end = dayText(last);
  if (first.year() != last.year()) return begin + "…" + end;
  const std::size_t days = first.month() == last.month() ? 2 : 5;
  return begin + "…" + end.substr(end.size() - days);
}

}  // namespace

GroupIndex::GroupIndex(const Library& library) {
  for (const FolderNaming::Row& row : library.rows) {
    entries_[row.group->id] = {&*row.group, &row.name};
    for (const MediaGroup& child : row.group->children) entries_[child.id] = {&child, &row.name};
  }
}

std::string daysText(const MediaGroup& group, const TimeZone& zone) {
  const auto span = tavrix::daysOf(group, zone);
  return span ? daysText(span->first, span->last) : std::string{};
}

std::string TextPrinter::daysOf(const MediaGroup& group) const {
  return group.dateStart ? daysText(group, zone_) : "—";
}

void TextPrinter::groupTable(const GroupsResult& result) {
  const std::vector<FolderNaming::Row>& rows = result.library.rows;
  std::vector<Table::Column> columns{{say(language_, sentences::titleFolder), false, true},
                                     {say(language_, sentences::titleShots), true},
                                     {say(language_, sentences::titlePhotos), true},
                                     {say(language_, sentences::titleVideos), true},
                                     {say(language_, sentences::titleOthers), true},
                                     {say(language_, sentences::titleSize), true},
                                     {say(language_, sentences::titleDays)}};
  const bool hasMerged = std::any_of(rows.begin(), rows.end(),
                                     [](const auto& row) { return !row.group->children.empty(); });
  if (hasMerged) columns.push_back({say(language_, sentences::titleNotes)});
  table(std::move(columns)).write(sink_, rows.size(), [&](std::size_t row) -> Table::Cells {
    const MediaGroup& group = *rows[row].group;
    const MediaGroup::MediaCounts counts = group.counts();
    Table::Cells cells{result.isFlat ? say(language_, sentences::flatFolder) : rows[row].name,
                       number(group.bundles.size()),
                       number(counts.photos),
                       number(counts.videos),
                       number(counts.sidecars + counts.others),
                       bytes(counts.totalBytes),
                       daysOf(group)};
    if (hasMerged) cells.push_back(mergedNote(language_, group));
    return cells;
  });
}

void TextPrinter::groups(const GroupsResult& result) {
  const Library& library = result.library;
  const std::uint64_t byChoice = library.leftOut.byChoice.value_or(0);
  if (library.fileCount == 0) return line(say(language_, sentences::emptyCatalog));
  if (library.rows.empty()) {
    return line(say(language_, byChoice > 0 ? sentences::emptyChoice : sentences::emptyGroups));
  }
  groupTable(result);
  std::uint64_t fileCount = 0;
  std::uint64_t totalBytes = 0;
  for (const FolderNaming::Row& row : library.rows) {
    const MediaGroup::MediaCounts counts = row.group->counts();
    totalBytes += counts.totalBytes;
    fileCount += counts.photos + counts.videos + counts.sidecars + counts.others;
  }
  line("");
  line(say(language_, sentences::totalGroups, count(library.rows.size(), sentences::folders),
           count(fileCount, sentences::files), bytes(totalBytes)));
  if (byChoice > 0) {
    line(say(language_, sentences::leftOutByChoice, count(byChoice, sentences::files)));
  }
  if (library.optimizedCount > 0) {
    line(say(language_, sentences::optimizedNote, number(library.optimizedCount)));
  }
  if (result.isFolder) dateSources(library);
  home(library);
  if (result.shorterDate) {
    const auto& [whole, now] = *result.shorterDate;
    line("");
    line(say(language_, sentences::wholeFolderDatesHint, printable(whole), printable(now)));
  }
  suggestions(result);
  reasons(result);
}

void TextPrinter::suggestions(const GroupsResult& result) {
  const Library& library = result.library;
  if (result.accepted) {
    line("");
    line(*result.accepted == 0 ? say(language_, sentences::nothingToAccept)
                               : say(language_, sentences::suggestionsAccepted,
                                     count(*result.accepted, sentences::merges)));
  }
  bool isFirst = true;
  for (const MergeSuggestion& suggestion : library.suggestions) {
    const MediaGroup* const trip = groupOf(library, suggestion.firstTripID);
    if (trip == nullptr) continue;  // left out by a choice
    if (std::exchange(isFirst, false)) line("");
    line(printable(suggestionText(language_, suggestion, *trip, library.places.get(), zone_)));
  }
  if (!isFirst) line(say(language_, sentences::acceptSuggestions));
}

void TextPrinter::home(const Library& library) {
  if (!library.home || library.filteredBundles->empty()) return;
  const auto text = [&](const HomeCandidate& each) {
    return candidateText(language_, library, each);
  };
  const auto& [point, isManual, name, rivals, recentSpanDays, periods] = *library.home;
  line("");
  if (!point) return line(say(language_, sentences::homeMissing));
  if (isManual) {
    const std::string where = pointText(*point);
    const auto known = name ? name : placeName(language_, library.landmarks.get(), *point);
    line(say(language_, sentences::homeManual,
             known ? fmt::format("{} ({})", printable(*known), where) : where));
    if (library.homeCandidates.empty()) return;
    return line(say(language_, sentences::homeAutomatic, text(library.homeCandidates.front())));
  }
  const HomeCandidate& present =
      periods.empty() ? library.homeCandidates.front() : periods.back().home;
  if (periods.empty()) {
    line(say(language_, sentences::homeFound, text(present)));
    line(recentSpanDays > 0
             ? say(language_, sentences::homeRecentSpan,
                   count(static_cast<std::uint64_t>(recentSpanDays), tavrix::sentences::daysOfStay))
             : say(language_, sentences::homeAllDays));
  } else {
    line(say(language_, sentences::homesFound));
    for (const std::string& each : homesText(language_, periods, library.landmarks.get())) {
      line("  " + printable(each));
    }
    line(say(language_, sentences::homePeriodsRule));
  }
  if (rivals.empty()) {
    if (!periods.empty() || library.homeCandidates.size() < 2) return;
    return line(say(language_, sentences::homeNext, text(library.homeCandidates[1])));
  }
  line(say(language_, sentences::homeAmbiguous));
  line("  " + text(present));
  for (const HomeCandidate& rival : rivals) line("  " + text(rival));
  const GeoPoint& other = rivals.front().center;
  line(say(language_, sentences::homeHint,
           fmt::format("{:.5f},{:.5f}", other.latitude, other.longitude)));
}

}  // namespace tavrix::cli
