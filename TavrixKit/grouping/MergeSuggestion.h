#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "grouping/GroupMerging.h"
#include "grouping/GroupingSettings.h"
#include "grouping/TripGrouping.h"

namespace tavrix {

/// Stays in one city that only outings from there separate, so that the user may want one folder
/// for all of them.
struct MergeSuggestion {
  /// The ids of the stays and of the outings between them, in chronological order. A stay that is
  /// shorter than a trip and the outings have ids of the form "outing-2026-05-12".
  std::vector<std::string> groupIDs;
  std::string firstTripID;  ///< the first of the ids that is a trip
  std::size_t trips = 0;
  std::size_t outings = 0;  ///< the other stays

  friend bool operator==(const MergeSuggestion&, const MergeSuggestion&) = default;
};

namespace MergeSuggestions {

/// Returns the suggestions for the stays, which have the ids `ids`, in chronological order. Stays
/// A – B – A are suggested as one if B is no trip, both A lie within `tripCityKm` of each other, at
/// least one A is a trip, and only the distance separates A from B: the user neither came home nor
/// paused. Chains A – B – A – C – A are one suggestion.
std::vector<MergeSuggestion> of(const std::vector<TripGrouping::Stay>& stays,
                                const std::vector<std::string>& ids,
                                const GroupingSettings& settings);

/// Returns the suggestions that are neither part of a merge nor equal to a rejected one, whatever
/// the order of its ids.
std::vector<MergeSuggestion> open(std::vector<MergeSuggestion> suggestions,
                                  const GroupMerges& merges, const GroupMerges& rejected);

}  // namespace MergeSuggestions

}  // namespace tavrix
