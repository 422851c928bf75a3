// TextPrinter: the reasons for the boundaries of folders.

#include <algorithm>

#include "cli/printing/GroupText.h"
#include "cli/printing/Measures.h"
#include "cli/printing/TextPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/GroupSentences.h"
#include "foundation/Text.h"
#include "text/MergedNote.h"

namespace tavrix::cli {
namespace {

using namespace grouping_reason;

/// Describes a reason of any kind in words.
class ReasonWords {
 public:
  ReasonWords(Language language, const TimeZone& zone, const std::vector<TripReasons::Stay>& stays)
      : language_(language), zone_(zone), stays_(stays) {}

  std::string operator()(const FirstShot&) const { return say(language_, sentences::firstShot); }
  std::string operator()(const LastShot&) const { return say(language_, sentences::lastShot); }
  std::string operator()(const NoHome&) const { return say(language_, sentences::homeMissing); }
  std::string operator()(const NoPosition&) const { return say(language_, sentences::noPosition); }
  std::string operator()(const Pause& pause) const {
    const auto [gap, limit] = comparedPauses(language_, pause.gap, pause.limitHours);
    return say(language_, sentences::pause, gap, limit);
  }
  std::string operator()(const Jump& reason) const { return distance(sentences::jump, reason); }
  std::string operator()(const AwayFromHome& reason) const {
    return distance(sentences::awayFromHome, reason);
  }
  std::string operator()(const NearHome& reason) const {
    return distance(sentences::notAway, reason);
  }
  std::string operator()(const NewCity& reason) const {
    return distance(sentences::newCity, reason);
  }
  std::string operator()(const Outing& outing) const {
    const TripReasons::Stay& stay = stays_.at(outing.stay);
    return say(language_, sentences::outing, span(stay), dayCount(stay), stay.minDays);
  }

  /// Describes the begin of a stay. Shots without a place may belong to the stay before or after a
  /// pause.
  std::string beginText(const StayBegin& begin) const {
    const auto* const pause = std::get_if<Pause>(&begin);
    return pause != nullptr ? pauseBetweenPlaces(*pause) : std::visit(*this, begin);
  }
  /// Describes the end of a stay. The words for a begin would describe what comes after it.
  std::string endText(const StayEnd& end) const {
    if (const auto* const pause = std::get_if<Pause>(&end)) return pauseBetweenPlaces(*pause);
    if (const auto* const home = std::get_if<NearHome>(&end)) {
      return distance(sentences::backHome, *home);
    }
    if (const auto* const city = std::get_if<NewCity>(&end)) {
      return distance(sentences::nextCity, *city);
    }
    return std::visit(*this, end);
  }

  /// Returns the first and the last day.
  std::string span(const TripReasons::Stay& stay) const {
    const std::string first = dayText(zone_.dateAt(stay.dateStart));
    const std::string last = dayText(zone_.dateAt(stay.dateEnd));
    return first == last ? first : first + "–" + last;
  }

  std::string dayCount(const TripReasons::Stay& stay) const {
    return counted(language_, static_cast<std::uint64_t>(stay.days), sentences::daysOfStay);
  }

 private:
  std::string pauseBetweenPlaces(const Pause& pause) const {
    const auto [gap, limit] = comparedPauses(language_, pause.gap, pause.limitHours);
    return say(language_, sentences::pauseBetweenPlaces, gap, limit);
  }
  template <typename Reason>
  std::string distance(const Sentence<std::string_view, std::string_view>& sentence,
                       const Reason& reason) const {
    const auto [km, limit] = comparedDistances(language_, reason.km, reason.limitKm);
    return say(language_, sentence, km, limit);
  }

  Language language_;
  const TimeZone& zone_;
  const std::vector<TripReasons::Stay>& stays_;
};

std::string calendarText(Language language, DateGranularity granularity, const std::string& id) {
  switch (granularity) {
    case DateGranularity::day:
      return say(language, sentences::calendarDay, id);
    case DateGranularity::month:
      return say(language, sentences::calendarMonth, id);
    case DateGranularity::year:
      return say(language, sentences::calendarYear, id);
  }
  return {};
}

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
                reason == nullptr ? say(language_, sentences::noDate) : std::visit(words, *reason)};
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
        library, [&](const MediaGroup& group) { return std::visit(words, begins.at(group.id)); });
  } else if (const auto* const trips = std::get_if<TripReasons>(&*library.reasons)) {
    line(say(language_, sentences::whyTrips));
    stays(library, *trips);
    shotsOutsideTrips(library, *trips);
  } else {
    line(say(language_, sentences::whyFlat));
  }
}

}  // namespace tavrix::cli
