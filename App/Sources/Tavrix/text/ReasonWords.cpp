#include "text/ReasonWords.h"

#include "text/HomeSentences.h"
#include "text/Measures.h"
#include "text/ReasonSentences.h"

namespace tavrix {

using namespace grouping_reason;

/// Describes a reason of any kind.
class ReasonWords::Visitor {
 public:
  explicit Visitor(const ReasonWords& words) : words_(words), language_(words.language_) {}

  std::string operator()(const FirstShot&) const { return say(language_, sentences::firstShot); }
  std::string operator()(const LastShot&) const { return say(language_, sentences::lastShot); }
  std::string operator()(const NoHome&) const { return say(language_, sentences::homeMissing); }
  std::string operator()(const NoPosition&) const { return say(language_, sentences::noPosition); }
  std::string operator()(const Pause& pause) const { return time(sentences::pause, pause); }
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
    const TripReasons::Stay& stay = words_.stays_.at(outing.stay);
    return say(language_, sentences::outing, words_.span(stay), words_.dayCount(stay),
               stay.minDays);
  }

  std::string time(const Sentence<std::string_view, std::string_view>& sentence,
                   const Pause& pause) const {
    const auto [gap, limit] = comparedPauses(language_, pause.gap, pause.limitHours);
    return say(language_, sentence, gap, limit);
  }
  template <typename Reason>
  std::string distance(const Sentence<std::string_view, std::string_view>& sentence,
                       const Reason& reason) const {
    const auto [km, limit] = comparedDistances(language_, reason.km, reason.limitKm);
    return say(language_, sentence, km, limit);
  }

 private:
  const ReasonWords& words_;
  Language language_;
};

std::string ReasonWords::eventText(const EventBegin& begin) const {
  return std::visit(Visitor{*this}, begin);
}

std::string ReasonWords::monthText(const MonthReason& reason) const {
  return std::visit(Visitor{*this}, reason);
}

std::string ReasonWords::monthTextOfSeveral(const MonthReason& farthest) const {
  const Visitor visitor{*this};
  const auto* const home = std::get_if<NearHome>(&farthest);
  return home != nullptr ? visitor.distance(sentences::noneAway, *home)
                         : std::visit(visitor, farthest);
}

std::string ReasonWords::beginText(const StayBegin& begin) const {
  const Visitor visitor{*this};
  const auto* const pause = std::get_if<Pause>(&begin);
  if (pause != nullptr) return visitor.time(sentences::pauseBetweenPlaces, *pause);
  return std::visit(visitor, begin);
}

std::string ReasonWords::endText(const StayEnd& end) const {
  const Visitor visitor{*this};
  if (const auto* const pause = std::get_if<Pause>(&end)) {
    return visitor.time(sentences::pauseBetweenPlaces, *pause);
  }
  if (const auto* const home = std::get_if<NearHome>(&end)) {
    return visitor.distance(sentences::backHome, *home);
  }
  if (const auto* const city = std::get_if<NewCity>(&end)) {
    return visitor.distance(sentences::nextCity, *city);
  }
  return std::visit(visitor, end);
}

std::string ReasonWords::span(const TripReasons::Stay& stay) const {
  const std::string first = dayText(stay.span.first);
  const std::string last = dayText(stay.span.last);
  return first == last ? first : first + "–" + last;
}

std::string ReasonWords::dayCount(const TripReasons::Stay& stay) const {
  return counted(language_, static_cast<std::uint64_t>(stay.days), sentences::daysOfStay);
}

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

}  // namespace tavrix
