#include "grouping/DatedShots.h"

#include <algorithm>

namespace tavrix {

ShotsByDate shotsByDate(const std::vector<AssetBundle>& bundles, const ShotClock& clock) {
  ShotsByDate shots;
  shots.dated.reserve(bundles.size());
  for (const AssetBundle& bundle : bundles) {
    if (const auto date = bundle.captureDate()) {
      DatedShot& shot = shots.dated.emplace_back();
      shot.date = *date;
      shot.day = *clock.dayOf(bundle);
      shot.bundle = &bundle;
      shot.position = bundle.position();
      if (shot.position) shot.vector = PlaceClustering::unitVector(*shot.position);
    } else {
      shots.undated.push_back(&bundle);
    }
  }
  const auto isEarlier = [](const DatedShot& a, const DatedShot& b) { return a.date < b.date; };
  if (!std::is_sorted(shots.dated.begin(), shots.dated.end(), isEarlier)) {
    std::stable_sort(shots.dated.begin(), shots.dated.end(), isEarlier);
  }
  return shots;
}

bool isLonger(Instant::duration pause, double hours) {
  return std::chrono::duration<double>{pause}.count() > hours * 3600;
}

}  // namespace tavrix
