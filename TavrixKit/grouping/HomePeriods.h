#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "grouping/HomeDetection.h"

namespace tavrix {

/// A part of a life with one home. The parts of a library follow each other without gaps.
struct HomePeriod {
  std::size_t begin = 0;                ///< index of its first shot; 0 in the first period
  HomeCandidate home;                   ///< counted in the shots of the period
  CivilDate firstDay;                   ///< of its first shot with a position
  CivilDate lastDay;                    ///< of its last shot with a position
  std::vector<HomeCandidate> rivals{};  ///< HomeDetection::rivals() in its shots

  friend bool operator==(const HomePeriod&, const HomePeriod&) = default;
};

/// Finds the homes of a library whose owner has moved.
namespace HomePeriods {

/// A period is at least as long, from its first day at its home to the last one.
inline constexpr std::chrono::days shortest{90};
/// The homes of two consecutive periods are at least as far apart.
inline constexpr double leastMoveKm = 50;

/// Returns the periods of shots, given in capture order. The home of a period is the one that
/// HomeDetection::candidates() finds in its shots. Returns one period if the owner has not moved,
/// and none if no shot has a position.
///
/// On each day the place with the most days in the 90 days around it leads (ties are settled by all
/// days, then by the earlier first shot). Days in a row with one leader are a period if at least 90
/// days lie between the first and the last day there; shorter ones join the period before them, the
/// shortest first. A period then begins on the day that leaves the fewest days on the wrong side.
/// The cost is nearly linear in the number of shots.
std::vector<HomePeriod> of(const std::vector<DatedShot>& shots, const GroupingSettings& settings);

}  // namespace HomePeriods

/// The homes from which the shots of a library are measured: one, or one after another.
class Homes {
 public:
  /// One home for all shots, or none.
  explicit Homes(const std::optional<GeoPoint>& home);
  /// The homes of consecutive periods.
  explicit Homes(const std::vector<HomePeriod>& periods);

  bool areUnknown() const { return homes_.empty(); }
  /// Returns the home of the shot with an index, or nullopt if none is known.
  std::optional<GeoPoint> at(std::size_t shot) const;

 private:
  struct Home {
    std::size_t begin;  ///< index of the first shot
    GeoPoint point;
  };
  std::vector<Home> homes_;
};

}  // namespace tavrix
