#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Sentence.h"
#include "grouping/HomePeriods.h"
#include "media/PlaceLookup.h"

namespace tavrix {

/// Returns the name of a place: its city, otherwise its region, otherwise its country. Returns
/// nullopt if it has no name or if `places` is null.
std::optional<std::string> placeName(Language language, const PlaceLookup* places,
                                     const GeoPoint& point);

/// Returns a home with the days of its time for each period: "Cologne — until 2019-03-14",
/// "Berlin — since 2019-03-15". A home without a name is named by its coordinates.
using DayFormat = std::function<std::string(CivilDate day)>;
std::vector<std::string> homesText(Language language, const std::vector<HomePeriod>& periods,
                                   const PlaceLookup* places, const DayFormat& format = dayText);

}  // namespace tavrix
