// TextPrinter: the reasons for the boundaries of folders.

#include <algorithm>

#include "cli/printing/GroupText.h"
#include "cli/printing/TextPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/GroupSentences.h"
#include "foundation/Text.h"
#include "text/HomeText.h"
#include "text/Measures.h"
#include "text/MergedNote.h"
#include "text/ReasonWords.h"

namespace tavrix::cli {
namespace {

using namespace grouping_reason;

/// A folder, or one of those it was merged from, in display order.
struct FolderLine {
  std::string name;
  const MediaGroup* group;
};

std::vector<FolderLine> folderLines(const Library& library) {
  std::vector<FolderLine> lines;
  for (const FolderNaming::Row& row : library.rows) {
    lines.push_back({row.name, &*row.group});
    for (const MediaGroup& child : row.group->children) lines.push_back({"  " + child.id, &child});
  }
  return lines;
}

/// A shot outside all trips, and the reason.
struct ShotLine {
  const std::string* folderName;
  const AssetBundle* bundle;
  const MonthReason* reason;  ///< nullptr for a shot without a date
};

std::vector<ShotLine> shotLines(const Library& library, const TripReasons& reasons) {
  std::map<std::string, const TripReasons::Month*> months;
  for (const TripReasons::Month& month : reasons.months) months[month.groupID] = &month;
  const GroupIndex index{library};
  std::vector<ShotLine> lines;
  for (const FolderLine& folder : folderLines(library)) {
    const auto month = months.find(folder.group->id);
    const bool isUndated = folder.group->id == "no-date";
    if (month == months.end() && !isUndated) continue;
    const std::string* const name = index.at(folder.group->id).folderName;
    for (std::size_t i = 0; i < folder.group->bundles.size(); ++i) {
      lines.push_back(
          {name, &folder.group->bundles[i], isUndated ? nullptr : &month->second->shots.at(i)});
    }
  }
  return lines;
}

/// Shots of one folder that are outside all trips for the same reason.
struct ShotCount {
  const std::string* folderName;
  std::optional<MonthReason> reason;  ///< that of the shot farthest from home
  std::uint64_t shots = 0;
};

bool isSameReason(const std::optional<MonthReason>& a, const MonthReason* b) {
  if (!a || b == nullptr) return !a && b == nullptr;
  return *a == *b || (std::holds_alternative<NearHome>(*a) && std::holds_alternative<NearHome>(*b));
}

/// Counts the shots by folder and reason, in the order in which each first occurs.
std::vector<ShotCount> countsOf(const std::vector<ShotLine>& lines) {
  std::vector<ShotCount> counts;
  std::size_t folder = 0;  // where the counts of the current folder begin
  for (const ShotLine& line : lines) {
    if (folder < counts.size() && counts[folder].folderName != line.folderName) {
      folder = counts.size();
    }
    const auto found =
        std::find_if(counts.begin() + static_cast<std::ptrdiff_t>(folder), counts.end(),
                     [&](const auto& count) { return isSameReason(count.reason, line.reason); });
    if (found == counts.end()) {
      counts.push_back({line.folderName, std::nullopt, 1});
      if (line.reason != nullptr) counts.back().reason = *line.reason;
      continue;
    }
    ++found->shots;
    const auto* const here = line.reason ? std::get_if<NearHome>(line.reason) : nullptr;
    if (here != nullptr && here->km > std::get<NearHome>(*found->reason).km) found->reason = *here;
  }
  return counts;
}

/// Returns false if a choice has left out the trip, or all shots of the outing.
bool isOfChoice(const TripReasons::Stay& stay, const TripReasons& reasons,
                const GroupIndex& index) {
  if (stay.groupID) return index.contains(*stay.groupID);
  const auto isOfStay = [&](const MonthReason& reason) {
    const auto* const outing = std::get_if<Outing>(&reason);
    return outing != nullptr && &reasons.stays.at(outing->stay) == &stay;
  };
  return std::any_of(reasons.months.begin(), reasons.months.end(), [&](const auto& month) {
    return std::any_of(month.shots.begin(), month.shots.end(), isOfStay);
  });
}

}  // namespace

std::string TextPrinter::beginText(const MediaGroup& group, const ShotClock& clock) const {
  if (!group.cameraDays) return dateText(group.dateStart);
  const auto first = std::ranges::find(group.bundles, group.dateStart, &AssetBundle::captureDate);
  // A choice may have left out the first shot.
  if (first == group.bundles.end()) return dayText(group.cameraDays->first);
  return timeText(*clock.timeOf(first->primaryPicture()));
}

void TextPrinter::foldersWithReasons(
    const Library& library, const std::function<std::string(const MediaGroup&)>& reasonOf) {
  const std::vector<FolderLine> lines = folderLines(library);
  table({{say(language_, sentences::titleFolder), false, true},
         {say(language_, sentences::titleBegin)},
         {say(language_, sentences::titleWhyFolder)}})
      .write(sink_, lines.size(), [&](std::size_t row) -> Table::Cells {
        const MediaGroup& group = *lines[row].group;
        const std::string merged = mergedNote(language_, group);
        const bool isUndated = group.id == "no-date";
        return {lines[row].name, beginText(group, library.clock),
                !merged.empty() ? merged
                : isUndated     ? say(language_, sentences::noDate)
                                : reasonOf(group)};
      });
}

void TextPrinter::stays(const Library& library, const TripReasons& reasons) {
  const ReasonWords words{language_, reasons.stays};
  const GroupIndex index{library};
  if (reasons.stays.empty() && library.home->point) {
    line(say(language_,
             library.homeCandidates.empty() ? sentences::emptyPlaces : sentences::noStays));
  }
  for (const TripReasons::Stay& stay : reasons.stays) {
    if (!isOfChoice(stay, reasons, index)) continue;
    const auto name = placeName(language_, library.landmarks.get(), stay.center);
    line(say(language_, sentences::stayLine, words.span(stay),
             name ? printable(*name) : say(language_, sentences::nearPoint, pointText(stay.center)),
             distanceText(language_, stay.homeKm), count(stay.shotCount, sentences::shots)));
    if (stay.groupID) {
      line(say(language_, stay.isTrip() ? sentences::stayTrip : sentences::stayMergedOuting,
               printable(*index.at(*stay.groupID).folderName), words.dayCount(stay), stay.minDays));
    } else {
      line(say(language_, sentences::stayOuting, words.dayCount(stay), stay.minDays));
    }
    line(say(language_, sentences::stayBegin, words.beginText(stay.begin)));
    line(say(language_, sentences::stayEnd, words.endText(stay.end)));
  }
}

void TextPrinter::shotsOutsideTrips(const Library& library, const TripReasons& reasons) {
  const std::vector<ShotLine> lines = shotLines(library, reasons);
  if (lines.empty()) return;
  const ReasonWords words{language_, reasons.stays};
  const auto takenText = [&](const AssetBundle& shot) {
    const auto time = library.clock.timeOf(shot.primaryPicture());
    return time ? timeText(*time) : dateText(std::nullopt);
  };
  line("");
  table({{say(language_, sentences::titleFolder), false, true},
         {say(language_, sentences::titleShot), false, true},
         {say(language_, sentences::titleDate)},
         {say(language_, sentences::titleWhyNoTrip)}})
      .write(sink_, lines.size(), [&](std::size_t row) -> Table::Cells {
        const auto& [folderName, bundle, reason] = lines[row];
        return {*folderName, pathOnPhone(bundle->primaryPicture()), takenText(*bundle),
                reason == nullptr ? say(language_, sentences::noDate) : words.monthText(*reason)};
      });
}

void TextPrinter::countsOutsideTrips(const Library& library, const TripReasons& reasons) {
  const std::vector<ShotCount> counts = countsOf(shotLines(library, reasons));
  if (counts.empty()) return;
  const ReasonWords words{language_, reasons.stays};
  line("");
  table({{say(language_, sentences::titleFolder), false, true},
         {say(language_, sentences::titleShots), true},
         {say(language_, sentences::titleWhyNoTrip)}})
      .write(sink_, counts.size(), [&](std::size_t row) -> Table::Cells {
        const auto& [folderName, reason, shots] = counts[row];
        return {*folderName, number(shots),
                reason ? words.monthTextOfSeveral(*reason) : say(language_, sentences::noDate)};
      });
  line(say(language_, sentences::explainAllHint));
}

void TextPrinter::reasons(const GroupsResult& result) {
  const Library& library = result.library;
  if (!library.reasons) return;
  line("");
  const bool hasCameraDays = library.clock.byCamera;
  if (hasCameraDays) line(say(language_, sentences::cameraDaysUsed, zone_.id()));
  if (const auto* const calendar = std::get_if<CalendarReasons>(&*library.reasons)) {
    if (!hasCameraDays) line(say(language_, sentences::calendarOfZone, zone_.id()));
    foldersWithReasons(library, [&](const MediaGroup& group) {
      return calendarText(language_, calendar->granularity, group.id);
    });
  } else if (const auto* const events = std::get_if<EventReasons>(&*library.reasons)) {
    std::map<std::string, EventBegin> begins;
    for (const EventReasons::Event& event : events->events) begins[event.groupID] = event.begin;
    line(say(language_, sentences::whyEvents));
    const std::vector<TripReasons::Stay> noStays;
    const ReasonWords words{language_, noStays};
    foldersWithReasons(
        library, [&](const MediaGroup& group) { return words.eventText(begins.at(group.id)); });
  } else if (const auto* const trips = std::get_if<TripReasons>(&*library.reasons)) {
    line(say(language_, sentences::whyTrips));
    stays(library, *trips);
    if (result.explainsShots) {
      shotsOutsideTrips(library, *trips);
    } else {
      countsOutsideTrips(library, *trips);
    }
  } else {
    line(say(language_, sentences::whyFlat));
  }
}

}  // namespace tavrix::cli
