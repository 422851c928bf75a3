#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "grouping/DatedShots.h"
#include "grouping/GroupingSettings.h"

namespace tavrix {

/// A place that may be the person's home.
struct HomeCandidate {
  GeoPoint center;
  std::int64_t recentDays = 0;  ///< days with a shot inside the recent span
  std::int64_t totalDays = 0;   ///< days with a shot
  std::int64_t pointCount = 0;  ///< located shots
  std::optional<Instant> firstDate;
  std::optional<Instant> lastDate;

  friend bool operator==(const HomeCandidate&, const HomeCandidate&) = default;
};

/// Finds the place from which trips are measured: where the person took pictures on the most days.
namespace HomeDetection {

/// The places of shots in capture order, best first: by days of the recent span, then by all days,
/// then by shots, then by which was there first. The span is the last `homeWindowDays` × 24 hours
/// up to the newest located shot, its first moment included; 0 or fewer make no day recent. A point
/// joins the earliest place whose centre lies within `homeRadiusKm`, and moves that centre. Shots
/// without a position are passed over. Near linear, however many places there are.
std::vector<HomeCandidate> candidates(const std::vector<DatedShot>& shots,
                                      const GroupingSettings& settings);

/// The candidates that might be home just as well as the first, in their order: with at least three
/// recent days, at least half as many as the first, and farther from it than `tripDistanceKm`, so
/// that each would make a trip destination of the other.
std::vector<HomeCandidate> rivals(const std::vector<HomeCandidate>& candidates,
                                  double tripDistanceKm);
/// Whether there is any rival.
bool isAmbiguous(const std::vector<HomeCandidate>& candidates, double tripDistanceKm);

/// The home chosen by the person, else the first candidate's centre, else none.
std::optional<GeoPoint> home(const std::optional<GeoPoint>& chosen,
                             const std::vector<HomeCandidate>& candidates);

}  // namespace HomeDetection

}  // namespace tavrix
