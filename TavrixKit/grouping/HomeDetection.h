#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "grouping/DatedShots.h"
#include "grouping/GroupingSettings.h"

namespace tavrix {

/// A place that may be the user's home.
struct HomeCandidate {
  GeoPoint center;
  std::int64_t recentDays = 0;  ///< days with a shot in the recent span
  std::int64_t totalDays = 0;   ///< days with a shot
  std::int64_t pointCount = 0;  ///< located shots
  std::optional<Instant> firstDate;
  std::optional<Instant> lastDate;

  friend bool operator==(const HomeCandidate&, const HomeCandidate&) = default;
};

/// Finds the home, from which trips are measured: the place where the user took pictures on the
/// most days.
namespace HomeDetection {

/// Returns the places of shots, given in capture order, best first. Places are ordered by the days
/// in the recent span; ties are settled by all days, then by the number of shots, then by the
/// earlier first shot. The recent span is the last `homeWindowDays` × 24 hours up to the newest
/// located shot, inclusive at both ends. If `homeWindowDays` is 0 or less, no day is recent. A
/// point joins the earliest place whose centre is within `homeRadiusKm` and moves that centre.
/// Shots without a position are ignored. The cost is nearly linear, however many places there are.
std::vector<HomeCandidate> candidates(std::span<const DatedShot> shots,
                                      const GroupingSettings& settings);

/// Returns the candidates that could be home as well as the first one, in their order. A rival has
/// at least three recent days, at least half the recent days of the first candidate, and is farther
/// from it than `tripDistanceKm`. So each would be a trip destination if the other were home.
std::vector<HomeCandidate> rivals(const std::vector<HomeCandidate>& candidates,
                                  double tripDistanceKm);
/// Returns true if the first candidate has any rival.
bool isAmbiguous(const std::vector<HomeCandidate>& candidates, double tripDistanceKm);

/// Returns the home chosen by the user, otherwise the centre of the first candidate. Returns
/// nullopt if there is neither.
std::optional<GeoPoint> home(const std::optional<GeoPoint>& chosen,
                             const std::vector<HomeCandidate>& candidates);

}  // namespace HomeDetection

}  // namespace tavrix
