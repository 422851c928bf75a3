#pragma once

#include <string>
#include <vector>

#include "foundation/Sentence.h"
#include "grouping/GroupingReasons.h"

namespace tavrix {

/// Describes in words why groups begin and end, each reason with the measured value and the setting
/// that it was compared with. Refers to the stays.
class ReasonWords {
 public:
  ReasonWords(Language language, const std::vector<TripReasons::Stay>& stays)
      : language_(language), stays_(stays) {}

  std::string eventText(const EventBegin& begin) const;
  std::string monthText(const MonthReason& reason) const;
  /// Describes the reason of several shots, of which the farthest from home has this one.
  std::string monthTextOfSeveral(const MonthReason& farthest) const;
  /// Describes the begin of a stay. Shots without a place may belong to the stay before or after a
  /// pause.
  std::string beginText(const StayBegin& begin) const;
  /// Describes the end of a stay. The words for a begin would describe what comes after it.
  std::string endText(const StayEnd& end) const;

  /// Returns the first and the last day.
  std::string span(const TripReasons::Stay& stay) const;
  std::string dayCount(const TripReasons::Stay& stay) const;

 private:
  class Visitor;

  Language language_;
  const std::vector<TripReasons::Stay>& stays_;
};

/// Describes a day, month or year of the calendar; `id` is the identifier of its group.
std::string calendarText(Language language, DateGranularity granularity, const std::string& id);

}  // namespace tavrix
