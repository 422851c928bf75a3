#pragma once

#include <string>

#include "foundation/GeoPoint.h"
#include "foundation/Sentence.h"
#include "foundation/Time.h"

namespace tavrix::cli {

/// A measured value and the setting that it was held against, such as "5 ч 12 мин" and "4 ч". The
/// setting is exact; the value is as precise as it takes for the two to read as they compare.
struct Compared {
  std::string value;
  std::string limit;
};

/// Kilometres: "61 km" and "30 km"; "100.04 km" and "100 km".
Compared comparedDistances(Language language, double km, double limitKm);
/// Hours and smaller units, or days and hours from a hundred hours on.
Compared comparedPauses(Language language, Instant::duration gap, double limitHours);

/// Whole kilometres.
std::string distanceText(Language language, double km);

/// "55.75, 37.62"; the same in every language, as it is typed.
std::string pointText(const GeoPoint& point);

}  // namespace tavrix::cli
