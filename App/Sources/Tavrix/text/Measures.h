#pragma once

#include <chrono>
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

/// Returns a time as a clock that runs shows it: "0:35", "12:05" or "1:02:03".
std::string durationText(std::chrono::seconds duration);
/// Returns a time with its units: "1 ч 2 мин 3 с". For screen readers, which take "1:02" for a time
/// of day.
std::string durationInUnits(Language language, std::chrono::seconds duration);

/// Returns a distance in whole kilometres.
std::string distanceText(Language language, double km);

/// Returns "55.75, 37.62", the same in every language, as the user types it.
std::string pointText(const GeoPoint& point);

}  // namespace tavrix
