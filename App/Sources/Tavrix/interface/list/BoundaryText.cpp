#include "interface/list/BoundaryText.h"

#include <fmt/format.h>

#include <algorithm>

#include "interface/words/BoundarySentences.h"
#include "interface/words/ListSentences.h"
#include "text/Measures.h"
#include "text/MergedNote.h"
#include "text/ReasonWords.h"

namespace tavrix::window {
namespace {

using Paragraphs = std::vector<std::string>;

constexpr std::size_t mostReasons = 6;

/// A reason for which shots are in no trip, and the number of these shots.
struct CountedReason {
  const MonthReason* reason;
  std::uint64_t shots = 1;
};

/// Returns true if both have the same kind and, for outings, the same stay.
bool isOneReason(const MonthReason& a, const MonthReason& b) {
  const bool isOuting = std::holds_alternative<grouping_reason::Outing>(a);
  return a.index() == b.index() && (!isOuting || a == b);
}

/// Returns the distance from home, or 0 if the reason is another one.
double distanceOf(const MonthReason& reason) {
  const auto* const near = std::get_if<grouping_reason::NearHome>(&reason);
  return near == nullptr ? 0 : near->km;
}

/// Counts the reasons, in the order of their first shots. Shots near home are represented by the
/// one that is farthest away.
std::vector<CountedReason> counted(const std::vector<MonthReason>& reasons) {
  std::vector<CountedReason> result;
  for (const MonthReason& reason : reasons) {
    const auto found = std::ranges::find_if(
        result, [&](const CountedReason& each) { return isOneReason(*each.reason, reason); });
    if (found == result.end()) {
      result.push_back({&reason});
      continue;
    }
    ++found->shots;
    if (distanceOf(reason) > distanceOf(*found->reason)) found->reason = &reason;
  }
  return result;
}

class Explanation {
 public:
  Explanation(Language language, const Library& library, const MediaGroup& group,
              const TimeZone& zone)
      : language_(language), library_(library), group_(group), zone_(zone) {}

  Paragraphs operator()(const CalendarReasons& reasons) const {
    return {group_.cameraDays ? say(language_, sentences::calendarOfCameras)
                              : say(language_, sentences::calendarOfZone, zone_.id()),
            say(language_, sentences::calendarFolder,
                calendarText(language_, reasons.granularity, group_.id))};
  }
  Paragraphs operator()(const EventReasons& reasons) const {
    const auto event = std::ranges::find(reasons.events, group_.id, &EventReasons::Event::groupID);
    if (event == reasons.events.end()) return {};
    const std::vector<TripReasons::Stay> noStays;
    const ReasonWords words{language_, noStays};
    const auto next = std::next(event);
    return {say(language_, sentences::folderBegan, words.eventText(event->begin)),
            next == reasons.events.end()
                ? say(language_, sentences::noNextFolder)
                : say(language_, sentences::nextFolderBegan, words.eventText(next->begin)),
            say(language_, sentences::boundaryHint)};
  }
  Paragraphs operator()(const TripReasons& reasons) const {
    const ReasonWords words{language_, reasons.stays};
    const auto month = std::ranges::find(reasons.months, group_.id, &TripReasons::Month::groupID);
    if (month != reasons.months.end()) return monthText(*month, words);
    const auto stay = std::ranges::find(reasons.stays, group_.id, &TripReasons::Stay::groupID);
    return stay == reasons.stays.end() ? Paragraphs{} : tripText(*stay, words);
  }
  Paragraphs operator()(const FlatReasons&) const { return {}; }

 private:
  Paragraphs tripText(const TripReasons::Stay& stay, const ReasonWords& words) const {
    Paragraphs text{say(language_, sentences::tripFromHome, distanceText(language_, stay.homeKm))};
    text.push_back(say(language_, sentences::tripBegan, words.beginText(stay.begin)));
    text.push_back(say(language_, sentences::tripEnded, words.endText(stay.end)));
    text.push_back(say(language_, sentences::boundaryHint));
    return text;
  }
  Paragraphs monthText(const TripReasons::Month& month, const ReasonWords& words) const {
    Paragraphs text{say(language_, sentences::monthOfNoTrip)};
    const auto reasons = counted(month.shots);
    for (std::size_t i = 0; i < std::min(reasons.size(), mostReasons); ++i) {
      const std::string shots = tavrix::counted(language_, reasons[i].shots, sentences::shots);
      text.push_back(fmt::format("• {} — {}", words.monthText(*reasons[i].reason), shots));
    }
    if (reasons.size() > mostReasons) text.push_back(say(language_, sentences::moreReasons));
    text.push_back(say(language_, sentences::boundaryHint));
    return text;
  }

  Language language_;
  const Library& library_;
  const MediaGroup& group_;
  const TimeZone& zone_;
};

}  // namespace

std::vector<std::string> boundaryText(Language language, const Library& library,
                                      const MediaGroup& group, const TimeZone& zone) {
  if (!group.children.empty()) {
    return {mergedNote(language, group) + ".", say(language, sentences::mergedByHand)};
  }
  if (!group.dateStart) return {say(language, sentences::undatedFolder)};
  if (!library.reasons) return {};
  return std::visit(Explanation{language, library, group, zone}, *library.reasons);
}

}  // namespace tavrix::window
