#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "foundation/GeoPoint.h"
#include "foundation/Time.h"
#include "grouping/GroupingMode.h"
#include "media/ShotClock.h"

namespace tavrix {

/// The reasons why groups begin and end, as data: the measured value and the setting with which it
/// was compared. Distances are in kilometres.
namespace grouping_reason {

/// No dated shot comes before.
struct FirstShot {
  friend bool operator==(const FirstShot&, const FirstShot&) = default;
};
/// No located shot comes after.
struct LastShot {
  friend bool operator==(const LastShot&, const LastShot&) = default;
};
/// The time between two shots is longer than the setting.
struct Pause {
  Instant::duration gap{};
  double limitHours = 0;
  friend bool operator==(const Pause&, const Pause&) = default;
};
/// The distance between two consecutive shots is greater than the setting.
struct Jump {
  double km = 0;
  double limitKm = 0;
  friend bool operator==(const Jump&, const Jump&) = default;
};
/// A shot is farther from home than the setting.
struct AwayFromHome {
  double km = 0;
  double limitKm = 0;
  friend bool operator==(const AwayFromHome&, const AwayFromHome&) = default;
};
/// A shot is at most as far from home as the setting.
struct NearHome {
  double km = 0;
  double limitKm = 0;
  friend bool operator==(const NearHome&, const NearHome&) = default;
};
/// An away shot is farther from the centre of the previous stay than the setting.
struct NewCity {
  double km = 0;
  double limitKm = 0;
  friend bool operator==(const NewCity&, const NewCity&) = default;
};
/// The shot belongs to a stay that is too short for a trip.
struct Outing {
  std::size_t stay = 0;  ///< index among the stays
  friend bool operator==(const Outing&, const Outing&) = default;
};
/// The shot has no position and is not between two away shots of one stay.
struct NoPosition {
  friend bool operator==(const NoPosition&, const NoPosition&) = default;
};
/// There is no home to measure from: no shot has both a date and a position.
struct NoHome {
  friend bool operator==(const NoHome&, const NoHome&) = default;
};

}  // namespace grouping_reason

using EventBegin =
    std::variant<grouping_reason::FirstShot, grouping_reason::Pause, grouping_reason::Jump>;
using StayBegin =
    std::variant<grouping_reason::AwayFromHome, grouping_reason::Pause, grouping_reason::NewCity>;
using StayEnd = std::variant<grouping_reason::LastShot, grouping_reason::NearHome,
                             grouping_reason::Pause, grouping_reason::NewCity>;
using MonthReason = std::variant<grouping_reason::NoHome, grouping_reason::NearHome,
                                 grouping_reason::Outing, grouping_reason::NoPosition>;

/// Reasons of grouping by date. Only the calendar decides; the group's id has the day, month or
/// year.
struct CalendarReasons {
  DateGranularity granularity = DateGranularity::day;
  friend bool operator==(const CalendarReasons&, const CalendarReasons&) = default;
};

struct EventReasons {
  struct Event {
    std::string groupID;
    EventBegin begin;
    friend bool operator==(const Event&, const Event&) = default;
  };
  std::vector<Event> events;  ///< in chronological order
  friend bool operator==(const EventReasons&, const EventReasons&) = default;
};

struct TripReasons {
  /// Consecutive shots away from home, in one city and without a long pause.
  struct Stay {
    /// The group of the trip or of a merged outing; nullopt for any other outing.
    std::optional<std::string> groupID;
    Instant dateStart;
    Instant dateEnd;
    DaySpan span;
    GeoPoint center;
    double homeKm = 0;  ///< from the home at its begin to its centre
    std::size_t shotCount = 0;
    std::int64_t days = 0;  ///< different days of its shots
    int minDays = 0;        ///< the setting that decides between trip and outing
    StayBegin begin;
    StayEnd end;

    bool isTrip() const { return days >= minDays; }
    friend bool operator==(const Stay&, const Stay&) = default;
  };
  struct Month {
    std::string groupID;
    std::vector<MonthReason> shots;  ///< one for each bundle of the group, in its order
    friend bool operator==(const Month&, const Month&) = default;
  };

  std::vector<Stay> stays;    ///< in chronological order
  std::vector<Month> months;  ///< in chronological order
  friend bool operator==(const TripReasons&, const TripReasons&) = default;
};

/// Flat mode has no reasons, because it splits nothing.
struct FlatReasons {
  friend bool operator==(const FlatReasons&, const FlatReasons&) = default;
};

using GroupingReasons = std::variant<CalendarReasons, EventReasons, TripReasons, FlatReasons>;

}  // namespace tavrix
