#pragma once

#include <optional>
#include <vector>

#include "grouping/PlaceClustering.h"
#include "media/AssetBundle.h"
#include "media/ShotClock.h"

namespace tavrix {

/// A shot with the values that grouping uses most: its date, day and position. The bundle must
/// outlive it.
struct DatedShot {
  Instant date;
  CivilDate day;
  std::optional<GeoPoint> position;
  PlaceClustering::UnitVector vector{};  ///< of the position; kept because computing it is costly
  const AssetBundle* bundle = nullptr;
};

struct ShotsByDate {
  std::vector<DatedShot> dated;  ///< in capture order, ties in catalogue order
  std::vector<const AssetBundle*> undated;
};

/// Splits shots, given in catalogue order, into shots with and without a capture date.
ShotsByDate shotsByDate(const std::vector<AssetBundle>& bundles, const ShotClock& clock);

/// Returns true if a pause is strictly longer than a number of hours.
bool isLonger(Instant::duration pause, double hours);

}  // namespace tavrix
