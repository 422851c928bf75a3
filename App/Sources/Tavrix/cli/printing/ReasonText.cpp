// TextPrinter: the reasons for the boundaries of folders.

#include <algorithm>

#include "cli/printing/GroupText.h"
#include "cli/printing/TextPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/GroupSentences.h"
#include "foundation/Text.h"
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
        return {lines[row].name, dateText(group.dateStart),
                !merged.empty() ? merged
                : isUndated     ? say(language_, sentences::noDate)
                                : reasonOf(group)};
      });
}

void TextPrinter::stays(const Library& library, const TripReasons& reasons) {
  const ReasonWords words{language_, zone_, reasons.stays};
  const GroupIndex index{library};
  const GeoPoint home = library.home->point.value_or(GeoPoint{});
  if (reasons.stays.empty() && library.home->point) {
    line(say(language_,
             library.homeCandidates.empty() ? sentences::emptyPlaces : sentences::noStays));
  }
  for (const TripReasons::Stay& stay : reasons.stays) {
    if (!isOfChoice(stay, reasons, index)) continue;
    const auto name = placeName(language_, library, stay.center);
    line(say(language_, sentences::stayLine, words.span(stay),
             name ? printable(*name) : say(language_, sentences::nearPoint, pointText(stay.center)),
             distanceText(language_, haversineDistanceKm(home, stay.center)),
             count(stay.shotCount, sentences::shots)));
    line(stay.groupID
             ? say(language_, sentences::stayTrip, printable(*index.at(*stay.groupID).folderName),
                   words.dayCount(stay), stay.minDays)
             : say(language_, sentences::stayOuting, words.dayCount(stay), stay.minDays));
    line(say(language_, sentences::stayBegin, words.beginText(stay.begin)));
    line(say(language_, sentences::stayEnd, words.endText(stay.end)));
  }
}

void TextPrinter::shotsOutsideTrips(const Library& library, const TripReasons& reasons) {
  const std::vector<ShotLine> lines = shotLines(library, reasons);
  if (lines.empty()) return;
  const ReasonWords words{language_, zone_, reasons.stays};
  line("");
  table({{say(language_, sentences::titleFolder), false, true},
         {say(language_, sentences::titleShot), false, true},
         {say(language_, sentences::titleDate)},
         {say(language_, sentences::titleWhyNoTrip)}})
      .write(sink_, lines.size(), [&](std::size_t row) -> Table::Cells {
        const auto& [folderName, bundle, reason] = lines[row];
        return {*folderName, pathOnPhone(bundle->primaryPicture()), dateText(bundle->captureDate()),
                reason == nullptr ? say(language_, sentences::noDate) : words.monthText(*reason)};
      });
}

void TextPrinter::reasons(const Library& library) {
  if (!library.reasons) return;
  line("");
  if (const auto* const calendar = std::get_if<CalendarReasons>(&*library.reasons)) {
    line(say(language_, sentences::calendarOfZone, zone_.id()));
    foldersWithReasons(library, [&](const MediaGroup& group) {
      return calendarText(language_, calendar->granularity, group.id);
    });
  } else if (const auto* const events = std::get_if<EventReasons>(&*library.reasons)) {
    std::map<std::string, EventBegin> begins;
    for (const EventReasons::Event& event : events->events) begins[event.groupID] = event.begin;
    line(say(language_, sentences::whyEvents));
    const std::vector<TripReasons::Stay> noStays;
    const ReasonWords words{language_, zone_, noStays};
    foldersWithReasons(
        library, [&](const MediaGroup& group) { return words.eventText(begins.at(group.id)); });
  } else if (const auto* const trips = std::get_if<TripReasons>(&*library.reasons)) {
    line(say(language_, sentences::whyTrips));
    stays(library, *trips);
    shotsOutsideTrips(library, *trips);
  } else {
    line(say(language_, sentences::whyFlat));
  }
}

}  // namespace tavrix::cli
