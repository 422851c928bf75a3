#pragma once

#include <string>

#include "foundation/GeoPoint.h"
#include "foundation/Sentence.h"
#include "foundation/Time.h"

namespace tavrix {

/// A measured value and the setting it was compared with, such as "5 ч 12 мин" and "4 ч". The
/// setting is exact; the value is just precise enough for the texts to compare as the numbers do.
struct Compared {
  std::string value;
  std::string limit;
};

/// Compares kilometres: "61 km" and "30 km"; "100.04 km" and "100 km".
Compared comparedDistances(Language language, double km, double limitKm);
/// Compares times in hours and smaller units, or in days and hours from a hundred hours on.
Compared comparedPauses(Language language, Instant::duration gap, double limitHours);

/// Returns a distance in whole kilometres.
std::string distanceText(Language language, double km);

/// Returns "55.75, 37.62", the same in every language, as the user types it.
std::string pointText(const GeoPoint& point);

}  // namespace tavrix
