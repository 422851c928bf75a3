// TextPrinter: home and merged folders.

#include "cli/printing/GroupText.h"

#include <algorithm>

#include "cli/printing/Measures.h"
#include "cli/printing/TextPrinter.h"
#include "cli/sentences/GroupSentences.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

bool isEventOrTrip(const MediaGroup& group) {
  return group.id.starts_with("event-") || group.id.starts_with("trip-");
}

std::string candidateText(Language language, const HomeCandidate& candidate) {
  const auto number = [&](std::int64_t count) {
    return numberText(language, static_cast<std::uint64_t>(count));
  };
  return say(language, sentences::homeCandidate, pointText(candidate.center),
             number(candidate.totalDays), number(candidate.recentDays));
}

}  // namespace

std::string mergedNote(Language language, const MediaGroup& group) {
  if (group.children.empty()) return {};
  const auto count = group.children.size();
  const std::string number = numberText(language, count);
  if (std::all_of(group.children.begin(), group.children.end(), isEventOrTrip)) {
    return say(language, sentences::eventsInside, number);
  }
  return say(language, sentences::mergedFrom, number,
             nounFor(language, count, sentences::foldersMerged));
}

GroupIndex::GroupIndex(const Library& library) {
  for (const FolderNaming::Row& row : library.rows) {
    entries_[row.group->id] = {&*row.group, &row.name};
    for (const MediaGroup& child : row.group->children) entries_[child.id] = {&child, &row.name};
  }
}

void TextPrinter::home(const Library& library) {
  if (!library.home || library.filteredBundles->empty()) return;
  const auto text = [&](const HomeCandidate& each) { return candidateText(language_, each); };
  const auto& [point, isManual, name, rivals, recentSpanDays] = *library.home;
  line("");
  if (!point) return line(say(language_, sentences::homeMissing));
  if (isManual) {
    const std::string where = pointText(*point);
    line(say(language_, sentences::homeManual,
             name ? fmt::format("{} ({})", printable(*name), where) : where));
    if (library.homeCandidates.empty()) return;
    return line(say(language_, sentences::homeAutomatic, text(library.homeCandidates.front())));
  }
  line(say(language_, sentences::homeFound, text(library.homeCandidates.front())));
  line(recentSpanDays > 0
           ? say(language_, sentences::homeRecentSpan,
                 count(static_cast<std::uint64_t>(recentSpanDays), sentences::daysOfStay))
           : say(language_, sentences::homeAllDays));
  if (rivals.empty()) {
    if (library.homeCandidates.size() < 2) return;
    return line(say(language_, sentences::homeNext, text(library.homeCandidates[1])));
  }
  line(say(language_, sentences::homeAmbiguous));
  line("  " + text(library.homeCandidates.front()));
  for (const HomeCandidate& rival : rivals) line("  " + text(rival));
  const GeoPoint& other = rivals.front().center;
  line(say(language_, sentences::homeHint,
           fmt::format("{:.5f},{:.5f}", other.latitude, other.longitude)));
}

}  // namespace tavrix::cli
