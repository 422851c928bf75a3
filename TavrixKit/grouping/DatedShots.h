#pragma once

#include <optional>
#include <vector>

#include "grouping/PlaceClustering.h"
#include "media/AssetBundle.h"

namespace tavrix {

/// A shot with what grouping asks of it most: when and where it was taken. Refers to a bundle that
/// must outlive it.
struct DatedShot {
  Instant date;
  std::optional<GeoPoint> position;
  PlaceClustering::UnitVector vector{};  ///< of the position; computing it costs most of a step
  const AssetBundle* bundle = nullptr;
};

struct ShotsByDate {
  std::vector<DatedShot> dated;  ///< in capture order, ties in catalogue order
  std::vector<const AssetBundle*> undated;
};

/// Splits shots, given in catalogue order, into those with a capture date and those without.
ShotsByDate shotsByDate(const std::vector<AssetBundle>& bundles);

/// Whether a pause is strictly longer than a number of hours.
bool isLonger(Instant::duration pause, double hours);

}  // namespace tavrix
